# SPDX-License-Identifier: MIT
"""A stateful stand-in for the `brew` command.

Only modules that are cheap to import are used here: a list report is asked for
several times at every start of the application, and what a user would notice
first is the time the interpreter spends importing.
"""

# SPDX-License-Identifier: MIT
"""What is measured: a module for each part of the report."""

# SPDX-License-Identifier: MIT
"""The ways in which a run ends early."""

from __future__ import annotations


class BrewError(Exception):
    """A failure reported as `Error: …` on standard error with status 1."""


class UsageError(BrewError):
    """A command line that the sub-command does not understand."""


class MisbehaviourError(Exception):
    """The switches file itself is wrong; a test must not mistake this for a switched failure."""


class Terminated(BaseException):
    """A signal asked the run to end."""

    def __init__(self, signal_number: int) -> None:
        super().__init__(signal_number)
        self.status = 128 + signal_number

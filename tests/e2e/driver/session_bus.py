# SPDX-License-Identifier: MIT
"""A private session bus on which accessibility is the only service."""

from __future__ import annotations

import shutil
import subprocess
from pathlib import Path

from .processes import start, stop
from .requirements import ACCESSIBILITY_SERVICE

# Services of the desktop, such as portals, would answer with the wishes of that desktop.
_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:tmpdir={folder}</listen>
  <auth>EXTERNAL</auth>
  <servicedir>{folder}/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""


class SessionBus:
    def __init__(self, folder: Path, environment: dict[str, str], log: Path) -> None:
        services = folder / "services"
        services.mkdir(parents=True)
        shutil.copy(ACCESSIBILITY_SERVICE, services)
        configuration = folder / "session.conf"
        configuration.write_text(_CONFIGURATION.format(folder=folder), encoding="utf-8")
        self._daemon = start(
            ["dbus-daemon", f"--config-file={configuration}", "--nofork", "--print-address"],
            log,
            stdout=subprocess.PIPE,
            env=environment,
        )
        assert self._daemon.stdout
        self.address = self._daemon.stdout.readline().decode().strip()
        if not self.address:
            raise RuntimeError(f"dbus-daemon did not start: {log.read_text(errors='replace')}")

    def close(self) -> None:
        stop(self._daemon)

# SPDX-License-Identifier: MIT
"""A desktop that changes its mind about light and dark, contrast and motion."""

from __future__ import annotations

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

_PORTAL = "org.freedesktop.portal.Desktop"
_PATH = "/org/freedesktop/portal/desktop"
_SETTINGS = "org.freedesktop.portal.Settings"
_VALUES = {"dark": 1, "light": 2}


class AppearancePortal:
    """It has to be there before the application, which looks for its name."""

    def __init__(self, session_address: str) -> None:
        flags = Gio.DBusConnectionFlags
        self._bus = Gio.DBusConnection.new_for_address_sync(
            session_address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None
        )
        daemon = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
        name = GLib.Variant("(su)", (_PORTAL, 0))
        self._bus.call_sync(*daemon, "RequestName", name, None, Gio.DBusCallFlags.NONE, -1, None)

    def prefer(self, appearance: str) -> None:
        self.wish("color-scheme", _VALUES[appearance])

    def wish(self, name: str, value: int) -> None:
        """For `contrast` and `reduced-motion`, too, which are 0 or 1."""
        setting = GLib.Variant(
            "(ssv)", ("org.freedesktop.appearance", name, GLib.Variant("u", value))
        )
        self._bus.emit_signal(None, _PATH, _SETTINGS, "SettingChanged", setting)
        self._bus.flush_sync(None)

    def close(self) -> None:
        self._bus.close_sync(None)

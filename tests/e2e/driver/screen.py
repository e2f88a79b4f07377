# SPDX-License-Identifier: MIT
"""A virtual display: its windows, its mouse, its keyboard, and pictures of it."""

from __future__ import annotations

import contextlib
import os
import subprocess
from collections.abc import Iterator
from pathlib import Path

from Xlib import XK, X, display, error
from Xlib.ext import xtest
from Xlib.protocol import event
from Xlib.xobject.drawable import Window

from .png import Picture
from .processes import start, stop

_MODIFIERS = {"ctrl": "Control_L", "shift": "Shift_L", "alt": "Alt_L"}


class Screen:
    """No window manager runs on it, so handing out the keyboard is up to us."""

    def __init__(self, width: int, height: int, log: Path) -> None:
        self.width = width
        self.height = height
        reading, writing = os.pipe()
        try:
            self._server = start(
                # fmt: off
                [
                    "Xvfb", "-displayfd", str(writing), "-screen", "0", f"{width}x{height}x24",
                    "-dpi", "96", "-nolisten", "tcp", "-noreset",
                ],
                # fmt: on
                log,
                pass_fds=[writing],
            )
        finally:
            os.close(writing)
        with os.fdopen(reading) as file:
            number = file.readline().strip()
        if not number:
            raise RuntimeError(f"Xvfb did not start: {log.read_text(errors='replace')}")
        self.name = f":{number}"
        self._display = display.Display(self.name)
        self._display.set_error_handler(_ignore)
        self._root = self._display.screen().root

    def close(self) -> None:
        try:
            self._display.close()
        except error.ConnectionClosedError:
            pass
        stop(self._server)

    # Mouse

    def move_mouse(self, x: int, y: int) -> None:
        xtest.fake_input(self._display, X.MotionNotify, x=x, y=y)
        self._display.sync()

    def press_button(self, button: int = 1) -> None:
        xtest.fake_input(self._display, X.ButtonPress, button)
        self._display.sync()

    def release_button(self, button: int = 1) -> None:
        xtest.fake_input(self._display, X.ButtonRelease, button)
        self._display.sync()

    def click(self, x: int, y: int, button: int = 1) -> None:
        self.move_mouse(x, y)
        self.press_button(button)
        self.release_button(button)

    def park_mouse(self) -> None:
        """Where no window is, so that nothing is drawn as hovered."""
        self.move_mouse(self.width - 1, self.height - 1)

    # Keyboard

    def press(self, keys: str) -> None:
        """One key, named as X names it, with modifiers before it: `Return`, `ctrl+f`."""
        with self.holding(keys):
            pass

    def holding(self, keys: str) -> contextlib.AbstractContextManager[None]:
        """The same, pressed until the end of the block."""
        *modifiers, key = keys.split("+")
        return self._hold_key(XK.string_to_keysym(key), [_MODIFIERS[name] for name in modifiers])

    def type(self, text: str) -> None:
        """Characters of ASCII, where their code is their key symbol's too."""
        for character in text:
            with self._hold_key(ord(character), []):
                pass

    @contextlib.contextmanager
    def _hold_key(self, symbol: int, modifiers: list[str]) -> Iterator[None]:
        code = self._display.keysym_to_keycode(symbol)
        if not code:
            raise ValueError(f"no key for symbol {symbol:#x}")
        names = list(modifiers)
        if self._display.keycode_to_keysym(code, 0) != symbol:
            names.append("Shift_L")
        held = [self._display.keysym_to_keycode(XK.string_to_keysym(name)) for name in names]
        for pressed in [*held, code]:
            xtest.fake_input(self._display, X.KeyPress, pressed)
        self._display.sync()
        yield
        for released in [code, *reversed(held)]:
            xtest.fake_input(self._display, X.KeyRelease, released)
        self._display.sync()

    # Windows

    def windows(self) -> list[Window]:
        """The windows to be seen, the topmost last."""
        return [window for window in self._root.query_tree().children if _is_seen(window)]

    def has_popup(self) -> bool:
        """Whether a menu is open. Menus are not in the accessible tree of their window."""
        return any(not _wants_focus(window) for window in self.windows())

    def focus_topmost(self) -> None:
        """Gives the keyboard to the topmost window, as a window manager does with a new one."""
        # Menus and tool tips come without asking for it.
        windows = [window for window in self.windows() if _wants_focus(window)]
        if windows and self._display.get_input_focus().focus != windows[-1]:
            windows[-1].set_input_focus(X.RevertToParent, X.CurrentTime)
            self._display.sync()

    def resize(self, window: Window, width: int, height: int) -> None:
        window.configure(width=width, height=height)
        self._display.sync()

    def minimise(self, window: Window) -> None:
        window.unmap()
        self._display.sync()

    def restore(self, window: Window) -> None:
        window.map()
        self._display.sync()

    @contextlib.contextmanager
    def withholding_windows(self) -> Iterator[None]:
        """New windows are seen only after the end of the block, as when a window manager starts
        them minimised."""
        self._root.change_attributes(event_mask=X.SubstructureRedirectMask)
        self._display.sync()
        try:
            yield
        finally:
            self._root.change_attributes(event_mask=X.NoEventMask)
            while self._display.pending_events():
                asked = self._display.next_event()
                if asked.type == X.MapRequest:
                    asked.window.map()
            self._display.sync()

    def close_window(self, window: Window) -> None:
        """Asks a window to close, as the cross in its title bar does."""
        delete = self._display.intern_atom("WM_DELETE_WINDOW")
        protocols = self._display.intern_atom("WM_PROTOCOLS")
        data = (32, [delete, X.CurrentTime, 0, 0, 0])
        window.send_event(event.ClientMessage(window=window, client_type=protocols, data=data))
        self._display.sync()

    # Pictures

    def picture(self, width: int | None = None, height: int | None = None) -> Picture:
        """The upper left part of the screen, with everything that lies above the window."""
        width, height = width or self.width, height or self.height
        image = self._root.get_image(0, 0, width, height, X.ZPixmap, 0xFFFFFFFF)
        return Picture(width, height, image.data)


def _ignore(*_details: object) -> None:
    """A window may go at any moment; what was asked of it is then of no interest."""


def _is_seen(window: Window) -> bool:
    try:
        return window.get_attributes().map_state == X.IsViewable
    except error.BadWindow:
        return False


def _wants_focus(window: Window) -> bool:
    try:
        return not window.get_attributes().override_redirect
    except error.BadWindow:
        return False

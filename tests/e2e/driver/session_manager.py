# SPDX-License-Identifier: MIT
"""A session manager for one program, that can be logged out of (X Session Management, 1.0)."""

from __future__ import annotations

import socket
import struct
import threading
from pathlib import Path

from .waiting import wait_until

# Major opcodes: of the connection itself, and of the one protocol spoken on it.
_CONNECTION = 0
_SESSION = 1
# Minor opcodes.
_BYTE_ORDER, _CONNECTION_SETUP, _CONNECTION_REPLY, _PROTOCOL_SETUP, _PROTOCOL_REPLY = 1, 2, 6, 7, 8
_REGISTER_CLIENT, _REGISTER_CLIENT_REPLY, _SAVE_YOURSELF = 1, 2, 3
_INTERACT_REQUEST, _INTERACT, _SAVE_YOURSELF_DONE, _DIE = 5, 6, 8, 9
_SAVE_COMPLETE = 18
# What is to be saved, and whether the user may be asked.
_LOCAL, _BOTH = 1, 2
_ASK_NOTHING, _ASK_ANYTHING = 0, 2

_HEADER = struct.Struct("<BBBBI")


class SessionManager:
    """Answers on a thread of its own, since a program waits for that as it starts."""

    def __init__(self, folder: Path) -> None:
        self._path = folder / "session-manager"
        self._listening = socket.socket(socket.AF_UNIX)
        self._listening.bind(str(self._path))
        self._listening.listen()
        self._client: socket.socket | None = None
        self._is_registered = False
        self._is_logging_out = False
        self._thread = threading.Thread(target=self._serve, daemon=True)
        self._thread.start()

    @property
    def address(self) -> str:
        return f"local/{socket.gethostname()}:{self._path}"

    def log_out(self) -> None:
        """Asks the program to save what it has to, and to end when it has."""
        wait_until(lambda: self._is_registered, "the program takes part in the session")
        self._is_logging_out = True
        self._save_yourself(_BOTH, True, _ASK_ANYTHING)

    def close(self) -> None:
        # The thread goes with the program, which is asked to end before; or nobody has come yet.
        self._listening.shutdown(socket.SHUT_RDWR)
        self._thread.join()
        self._listening.close()

    def _serve(self) -> None:
        try:
            self._client, _ = self._listening.accept()
            with self._client:
                self._send(_CONNECTION, _BYTE_ORDER)
                while header := self._receive(_HEADER.size):
                    major, minor, _, _, length = _HEADER.unpack(header)
                    body = self._receive(8 * length)
                    if major == _CONNECTION:
                        self._answer_about_the_connection(minor)
                    else:
                        self._answer_about_the_session(minor, body)
        except OSError:
            return

    def _receive(self, count: int) -> bytes:
        assert self._client
        return self._client.recv(count, socket.MSG_WAITALL) if count else b""

    def _send(self, major: int, minor: int, data: bytes = bytes(2), body: bytes = b"") -> None:
        assert self._client
        body += bytes(-len(body) % 8)
        self._client.sendall(_HEADER.pack(major, minor, *data, len(body) // 8) + body)

    def _answer_about_the_connection(self, minor: int) -> None:
        # Vendor and release are texts behind their lengths.
        nobody = struct.pack("<HxxHxx", 0, 0)
        if minor == _CONNECTION_SETUP:
            self._send(_CONNECTION, _CONNECTION_REPLY, body=nobody)
        elif minor == _PROTOCOL_SETUP:
            self._send(_CONNECTION, _PROTOCOL_REPLY, bytes([0, _SESSION]), nobody)

    def _answer_about_the_session(self, minor: int, body: bytes) -> None:
        if minor == _REGISTER_CLIENT:
            name = b"1"
            self._send(_SESSION, _REGISTER_CLIENT_REPLY, body=struct.pack("<I", len(name)) + name)
            # Who is new saves once, so that it is known how.
            self._save_yourself(_LOCAL, False, _ASK_NOTHING)
        elif minor == _INTERACT_REQUEST:
            self._send(_SESSION, _INTERACT)
        elif minor == _SAVE_YOURSELF_DONE and self._is_logging_out:
            self._send(_SESSION, _DIE)
        elif minor == _SAVE_YOURSELF_DONE:
            self._send(_SESSION, _SAVE_COMPLETE)
            self._is_registered = True

    def _save_yourself(self, kind: int, is_the_end: bool, questions: int) -> None:
        self._send(_SESSION, _SAVE_YOURSELF, body=bytes([kind, is_the_end, questions, False]))

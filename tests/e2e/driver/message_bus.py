# SPDX-License-Identifier: MIT
"""A connection to a message bus that many things are asked on at once."""

from __future__ import annotations

import contextlib
import functools
from collections.abc import Callable, Iterable, Iterator
from typing import Any, NamedTuple

from dbus.bus import BusConnection
from dbus.lowlevel import (
    HANDLER_RESULT_NOT_YET_HANDLED,
    MESSAGE_TYPE_METHOD_RETURN,
    MESSAGE_TYPE_SIGNAL,
    Message,
    MethodCallMessage,
)
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

_PATIENCE = 30
# What the library takes for no limit: a clock for each of hundreds of questions takes longer.
_NO_LIMIT = 2**31 / 1000 - 0.001


class Ref(NamedTuple):
    bus: str
    path: str


class Call(NamedTuple):
    ref: Ref
    interface: str
    method: str
    signature: str = ""
    arguments: tuple[Any, ...] = ()


class MessageBus:
    def __init__(self, address: str) -> None:
        self._connection = BusConnection(address, mainloop=DBusGMainLoop())
        # The bus may end before whoever looks at it.
        self._connection.set_exit_on_disconnect(False)

    def close(self) -> None:
        self._connection.close()

    def call(self, call: Call) -> Any:
        """The answer; none where the thing asked is gone."""
        (answer,) = self.call_all([call])
        return answer

    def call_all(self, calls: Iterable[Call]) -> list[Any]:
        """The answers in the order of the questions; none where the thing asked is gone."""
        calls = list(calls)
        answers: list[Any] = [None] * len(calls)
        waiting = len(calls)

        def answered(answer: Any, place: int) -> None:
            nonlocal waiting
            waiting -= 1
            answers[place] = answer

        for place, call in enumerate(calls):
            self.ask(call, functools.partial(answered, place=place))
        is_over: list[bool] = []
        clock = GLib.timeout_add_seconds(_PATIENCE, lambda: is_over.append(True))
        context = GLib.MainContext.default()
        while waiting:
            context.iteration(True)
            if is_over:
                raise TimeoutError(f"the application does not answer within {_PATIENCE} s")
        GLib.source_remove(clock)
        return answers

    def ask(self, call: Call, answered: Callable[[Any], None]) -> None:
        message = MethodCallMessage(*call.ref, call.interface, call.method)
        if call.signature:
            message.append(*call.arguments, signature=call.signature)

        def finish(reply: Message) -> None:
            answered(_answer_in(reply))

        self._connection.send_message_with_reply(message, finish, _NO_LIMIT)

    def listen(self, seconds: float) -> None:
        """Rather than sleep: what is told is heard at once."""
        loop = GLib.MainLoop()
        GLib.timeout_add(round(1000 * seconds), loop.quit)
        loop.run()

    @contextlib.contextmanager
    def listening(
        self, interface: str, signal: str, keep: Callable[..., None]
    ) -> Iterator[Callable[[], None]]:
        """Hands who has sent such a signal, and what it says, to `keep`, while something is asked
        or listened to, and whenever the function that it gives is called."""
        rule = f"type='signal',interface='{interface}',member='{signal}'"

        def look(_connection: Any, message: Message) -> int:
            if message.get_type() == MESSAGE_TYPE_SIGNAL and message.get_member() == signal:
                keep(Ref(message.get_sender(), message.get_path()), *message.get_args_list())
            return HANDLER_RESULT_NOT_YET_HANDLED

        self._connection.add_message_filter(look)
        self._connection.add_match_string(rule)
        try:
            yield _catch_up
        finally:
            self._connection.remove_match_string(rule)
            self._connection.remove_message_filter(look)


def _catch_up() -> None:
    while GLib.MainContext.default().iteration(False):
        pass


def _answer_in(reply: Message) -> Any:
    if reply.get_type() != MESSAGE_TYPE_METHOD_RETURN:
        return None
    answer = (reply.get_args_list() or [None])[0]
    return str(answer) if isinstance(answer, str) else answer

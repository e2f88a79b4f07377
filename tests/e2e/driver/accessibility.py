# SPDX-License-Identifier: MIT
"""Reads what an application shows from the accessibility bus."""

from __future__ import annotations

import contextlib
import functools
from collections.abc import Callable, Iterable, Iterator
from typing import Any, NamedTuple

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

from .tree import Node, Rect, Tree

_REGISTRY = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
_ACCESSIBLE = "org.a11y.atspi.Accessible"
_COMPONENT = "org.a11y.atspi.Component"
_ACTION = "org.a11y.atspi.Action"
_TEXT = "org.a11y.atspi.Text"
_EDITABLE_TEXT = "org.a11y.atspi.EditableText"
_PROPERTIES = "org.freedesktop.DBus.Properties"
_ACCESSIBLE_QUESTIONS = (
    "GetApplication",
    "GetAttributes",
    "GetChildren",
    "GetIndexInParent",
    "GetInterfaces",
    "GetLocalizedRoleName",
    "GetRelationSet",
    "GetRole",
    "GetRoleName",
    "GetState",
)
_PATIENCE_MS = 30_000
_SHOWING = 25
_STATES = {
    3: "busy",
    4: "checked",
    8: "enabled",
    11: "focusable",
    12: "focused",
    16: "modal",
    22: "selectable",
    23: "selected",
}
# In coordinates of the screen, not of the window.
_SCREEN = 0
_ON_SCREEN = GLib.Variant("(u)", (_SCREEN,))
_NAME = GLib.Variant("(ss)", (_ACCESSIBLE, "Name"))
_DESCRIPTION = GLib.Variant("(ss)", (_ACCESSIBLE, "Description"))
_LONGEST_TEXT = 200_000
_TO_THE_END = -1


class Ref(NamedTuple):
    bus: str
    path: str


class Call(NamedTuple):
    ref: Ref
    interface: str
    method: str
    arguments: GLib.Variant | None = None


def _end_of(length: int | None) -> int:
    """The end of a text wherever that is by then: the toolkit warns of one that was."""
    return _LONGEST_TEXT if length and length > _LONGEST_TEXT else _TO_THE_END


class AccessibilityBus:
    def __init__(self, session_address: str) -> None:
        session = _connect(session_address)
        reply = session.call_sync(
            # fmt: off
            "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
            Gio.DBusCallFlags.NONE, _PATIENCE_MS, None,
            # fmt: on
        )
        session.close_sync(None)
        self._bus = _connect(reply.unpack()[0])

    def close(self) -> None:
        if not self._bus.is_closed():
            self._bus.close_sync(None)

    def application_of(self, process: int) -> Ref | None:
        """The application that a process has announced on the bus, if it has by now."""
        (answer,) = self._call_all([Call(Ref(*_REGISTRY), _ACCESSIBLE, "GetChildren")])
        for bus, path in answer or []:
            (owner,) = self._call_all(
                [
                    Call(
                        Ref("org.freedesktop.DBus", "/org/freedesktop/DBus"),
                        "org.freedesktop.DBus",
                        "GetConnectionUnixProcessID",
                        GLib.Variant("(s)", (bus,)),
                    )
                ]
            )
            if owner == process:
                return Ref(bus, path)
        return None

    @contextlib.contextmanager
    def changed_texts(self) -> Iterator[Callable[[], list[str]]]:
        """What applications have told by now of texts that change, as a screen reader hears it."""
        told: list[str] = []

        def keep(*event: Any) -> None:
            told.append(str(event[5].unpack()))

        with self._listening("object:text-changed", "TextChanged", keep) as catch_up:
            yield lambda: catch_up() or told

    @contextlib.contextmanager
    def entered_states(
        self, state: str, entered: int = 1
    ) -> Iterator[Callable[[], list[list[str]]]]:
        """Role and name of what has told by now that it is in a state, such as being focused.

        Or of what has told that it isn't any more.
        """
        told: list[list[str]] = []

        def keep(_bus: Any, sender: str, path: str, _interface: str, _signal: str, data: Any) -> None:
            changed, is_in, *_ = data.unpack()
            if (changed, is_in) != (state, entered):
                return
            # Asked at once: it may be called something else later, or be gone.
            heard = ["", ""]
            told.append(heard)
            name, role, _ = _questions(Ref(sender, path))
            self._ask(role, lambda answer, _: heard.__setitem__(0, answer))
            self._ask(name, lambda answer, _: heard.__setitem__(1, answer))

        with self._listening("object:state-changed", "StateChanged", keep) as catch_up:
            yield lambda: catch_up() or told

    @contextlib.contextmanager
    def announcements(self) -> Iterator[Callable[[], list[str]]]:
        """What a screen reader has read out by now without being asked.

        Notifications that appear; newer toolkits say besides, or instead, what there is to say.
        """
        said: list[str] = []

        def keep(*event: Any) -> None:
            said.append(str(event[5].unpack()[3]))

        with self.entered_states("showing") as shown, self._listening(
            "object:announcement", "Announcement", keep
        ):

            def told_by_now() -> list[str]:
                told = [name for role, name in shown() if role == "notification"]
                return told + [text for text in said if text not in told]

            yield told_by_now

    @contextlib.contextmanager
    def _listening(
        self, event: str, signal: str, keep: Callable[..., None]
    ) -> Iterator[Callable[[], None]]:
        """Applications only tell of what somebody has said to be listening to."""
        registry = Ref("org.a11y.atspi.Registry", "/org/a11y/atspi/registry")
        wanted = GLib.Variant("(s)", (event,))
        arguments = (registry.bus, registry.path, "org.a11y.atspi.Registry")
        options = (None, Gio.DBusCallFlags.NONE, _PATIENCE_MS, None)
        subscription = self._bus.signal_subscribe(
            None, "org.a11y.atspi.Event.Object", signal, None, None, Gio.DBusSignalFlags.NONE, keep
        )
        self._bus.call_sync(*arguments, "RegisterEvent", wanted, *options)

        def catch_up() -> None:
            while GLib.MainContext.default().iteration(False):
                pass

        try:
            yield catch_up
        finally:
            self._bus.call_sync(*arguments, "DeregisterEvent", wanted, *options)
            self._bus.signal_unsubscribe(subscription)

    def read(self, application: Ref) -> Tree:
        """What is showing now. Things that go while they are being read are left out."""
        level: list[tuple[Ref, list[Node]]] = []
        windows: list[Node] = []
        (children,) = self._call_all([Call(application, _ACCESSIBLE, "GetChildren")])
        level = [(Ref(*child), windows) for child in children or []]
        # The whole of a level is asked for at once, and only what is showing is asked again.
        while level:
            states = self._call_all([Call(ref, _ACCESSIBLE, "GetState") for ref, _ in level])
            showing = [
                (ref, siblings, state)
                for (ref, siblings), state in zip(level, states)
                if state and state[0] >> _SHOWING & 1
            ]
            questions = [question for ref, _, _ in showing for question in _questions(ref)]
            answers = iter(self._call_all(questions))
            level = []
            texts: list[tuple[Ref, Node]] = []
            for ref, siblings, state in showing:
                name, role, children = (next(answers) for _ in range(3))
                if role is None:
                    continue
                names = frozenset(word for bit, word in _STATES.items() if state[0] >> bit & 1)
                node = Node(role, name or "", "", names, ref, self)
                siblings.append(node)
                if role == "text":
                    texts.append((ref, node))
                level += [(Ref(*child), node.children) for child in children or []]
            self._read_texts(texts)
        return Tree(windows)

    def description_of(self, ref: Ref) -> str:
        (description,) = self._call_all([Call(ref, _PROPERTIES, "Get", _DESCRIPTION)])
        return description or ""

    def rect_of(self, ref: Ref) -> Rect | None:
        (rect,) = self._call_all([Call(ref, _COMPONENT, "GetExtents", _ON_SCREEN)])
        return Rect(*rect) if rect else None

    def actions_of(self, nodes: list[Node]) -> list[list[str]]:
        """What can be done with each of them, by the names that are the same in all languages."""
        interfaces = self._call_all([Call(node.ref, _ACCESSIBLE, "GetInterfaces") for node in nodes])
        able = [node for node, names in zip(nodes, interfaces) if _ACTION in (names or [])]
        counts = self._call_all(
            Call(node.ref, _PROPERTIES, "Get", GLib.Variant("(ss)", (_ACTION, "NActions")))
            for node in able
        )
        places = [(node, place) for node, count in zip(able, counts) for place in range(count or 0)]
        names = self._call_all(
            Call(node.ref, _ACTION, "GetName", GLib.Variant("(i)", (place,))) for node, place in places
        )
        actions: dict[Ref, list[str]] = {}
        for (node, _), name in zip(places, names):
            actions.setdefault(node.ref, []).append(name or "")
        return [actions.get(node.ref, []) for node in nodes]

    def pester(self, nodes: list[Node]) -> None:
        """Asks all that can be asked of things that may be gone, and doesn't care for answers."""
        point = GLib.Variant("(iiu)", (300, 120, _SCREEN))
        questions = [(_ACCESSIBLE, method, None) for method in _ACCESSIBLE_QUESTIONS]
        questions += [
            (_ACCESSIBLE, "GetChildAtIndex", GLib.Variant("(i)", (0,))),
            (_PROPERTIES, "Get", GLib.Variant("(ss)", (_ACCESSIBLE, "Parent"))),
            (_PROPERTIES, "Get", GLib.Variant("(ss)", (_ACCESSIBLE, "ChildCount"))),
            (_COMPONENT, "GetExtents", _ON_SCREEN),
            (_COMPONENT, "GetAccessibleAtPoint", point),
            (_ACTION, "GetActions", None),
        ]
        self._call_all([Call(node.ref, *question) for node in nodes for question in questions])

    def act(self, node: Node, action: int) -> bool:
        call = Call(node.ref, _ACTION, "DoAction", GLib.Variant("(i)", (action,)))
        return self._call_all([call]) == [True]

    def write(self, node: Node, text: str) -> bool:
        call = Call(node.ref, _EDITABLE_TEXT, "SetTextContents", GLib.Variant("(s)", (text,)))
        return self._call_all([call]) == [True]

    def _read_texts(self, texts: list[tuple[Ref, Node]]) -> None:
        lengths = self._call_all(
            Call(ref, _PROPERTIES, "Get", GLib.Variant("(ss)", (_TEXT, "CharacterCount")))
            for ref, _ in texts
        )
        # An end beyond the text's own gives nothing at all.
        contents = self._call_all(
            Call(ref, _TEXT, "GetText", GLib.Variant("(ii)", (0, _end_of(length))))
            for (ref, _), length in zip(texts, lengths)
        )
        for (_, node), content in zip(texts, contents):
            node.text = content or ""

    def _call_all(self, calls: Iterable[Call]) -> list[Any]:
        """The answers in the order of the questions; none where the thing asked is gone."""
        calls = list(calls)
        answers: list[Any] = [None] * len(calls)
        waiting = len(calls)

        def answered(answer: Any, error: GLib.Error | None, place: int) -> None:
            nonlocal waiting
            waiting -= 1
            answers[place] = answer
            if error and error.matches(Gio.io_error_quark(), Gio.IOErrorEnum.TIMED_OUT):
                failures.append(error)

        failures: list[GLib.Error] = []
        for place, call in enumerate(calls):
            self._ask(call, functools.partial(answered, place=place))
        context = GLib.MainContext.default()
        while waiting:
            context.iteration(True)
        if failures:
            raise TimeoutError(f"the application does not answer: {failures[0].message}")
        return answers


    def _ask(self, call: Call, answered: Callable[[Any, GLib.Error | None], None]) -> None:
        def finish(bus: Gio.DBusConnection, result: Gio.AsyncResult) -> None:
            try:
                answer, *_ = bus.call_finish(result).unpack() or (None,)
            except GLib.Error as error:
                answered(None, error)
            else:
                answered(answer, None)

        self._bus.call(
            # fmt: off
            call.ref.bus, call.ref.path, call.interface, call.method, call.arguments, None,
            Gio.DBusCallFlags.NO_AUTO_START, _PATIENCE_MS, None, finish,
            # fmt: on
        )


def _questions(ref: Ref) -> list[Call]:
    return [
        Call(ref, _PROPERTIES, "Get", _NAME),
        Call(ref, _ACCESSIBLE, "GetRoleName"),
        Call(ref, _ACCESSIBLE, "GetChildren"),
    ]


def _connect(address: str) -> Gio.DBusConnection:
    flags = Gio.DBusConnectionFlags
    return Gio.DBusConnection.new_for_address_sync(
        address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None
    )

# SPDX-License-Identifier: MIT
"""Reads what an application shows from the accessibility bus."""

from __future__ import annotations

import contextlib
import functools
from collections.abc import Callable, Iterator
from typing import Any

from .message_bus import Call, MessageBus, Ref
from .tree import Node, Rect, Tree

_ROOT = Ref("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
_REGISTRY = Ref("org.a11y.atspi.Registry", "/org/a11y/atspi/registry")
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
_ROWS = 20
_LONGEST_TEXT = 200_000
_TO_THE_END = -1


def _states_in(bits: int) -> frozenset[str]:
    return frozenset(word for bit, word in _STATES.items() if bits >> bit & 1)


def _end_of(length: int | None) -> int:
    """The end of a text wherever that is by then: the toolkit warns of one that was."""
    return _LONGEST_TEXT if length and length > _LONGEST_TEXT else _TO_THE_END


class AccessibilityBus:
    def __init__(self, session_address: str) -> None:
        session = MessageBus(session_address)
        bus = Ref("org.a11y.Bus", "/org/a11y/bus")
        self._bus = MessageBus(session.call(Call(bus, "org.a11y.Bus", "GetAddress")))
        session.close()

    def close(self) -> None:
        self._bus.close()

    def application_of(self, process: int) -> Ref | None:
        """The application that a process has announced on the bus, if it has by now."""
        bus = Ref("org.freedesktop.DBus", "/org/freedesktop/DBus")
        for name, path in self._bus.call(Call(_ROOT, _ACCESSIBLE, "GetChildren")) or []:
            call = Call(bus, "org.freedesktop.DBus", "GetConnectionUnixProcessID", "s", (name,))
            if self._bus.call(call) == process:
                return Ref(name, path)
        return None

    def listen(self, seconds: float) -> None:
        self._bus.listen(seconds)

    @contextlib.contextmanager
    def changed_texts(self) -> Iterator[Callable[[], list[str]]]:
        """What applications have told by now of texts that change, as a screen reader hears it."""
        told: list[str] = []

        def keep(_sender: Ref, kind: str, place: int, length: int, text: str, *_: Any) -> None:
            told.append(str((str(kind), int(place), int(length), str(text))))

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

        def keep(sender: Ref, changed: str, is_in: int, *_: Any) -> None:
            if (changed, is_in) != (state, entered):
                return
            # Asked at once: it may be called something else later, or be gone.
            heard = ["", ""]
            told.append(heard)
            for place, call in enumerate((_role(sender), _name(sender))):
                self._bus.ask(call, functools.partial(heard.__setitem__, place))

        with self._listening("object:state-changed", "StateChanged", keep) as catch_up:
            yield lambda: catch_up() or told

    @contextlib.contextmanager
    def announcements(self) -> Iterator[Callable[[], list[str]]]:
        """What a screen reader has read out by now without being asked.

        Notifications that appear; newer toolkits say besides, or instead, what there is to say.
        """
        said: list[str] = []

        def keep(_sender: Ref, _kind: str, _urgency: int, _: int, text: str, *_more: Any) -> None:
            said.append(str(text))

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
        interface = "org.a11y.atspi.Registry"
        with self._bus.listening("org.a11y.atspi.Event.Object", signal, keep) as catch_up:
            self._bus.call(Call(_REGISTRY, interface, "RegisterEvent", "s", (event,)))
            try:
                yield catch_up
            finally:
                self._bus.call(Call(_REGISTRY, interface, "DeregisterEvent", "s", (event,)))

    def read(self, application: Ref, is_of_interest: Callable[[Node], bool]) -> Tree:
        """What is showing now. Things that go while they are being read are left out.

        What is not of interest is asked for its name only when somebody wants to know.
        """
        root = Node("application", frozenset(), application, self)
        nodes: list[Node] = []
        children = self._bus.call(Call(application, _ACCESSIBLE, "GetChildren"))
        unread = [(root, [Ref(*child) for child in children or []])]
        # A whole level is asked all there is to know, shown or not: waiting for each other takes
        # the processes longer than answers that nobody needs.
        while unread:
            level = [
                (parent, refs[:count], refs[count:])
                for parent, refs in unread
                for count in [_ROWS if parent.role == "list" else len(refs)]
            ]
            questions = (call for _, refs, _ in level for ref in refs for call in _questions(ref))
            answers = iter(self._bus.call_all(questions))
            unread = []
            for parent, refs, others in level:
                is_showing = False
                for ref in refs:
                    state, role, children = (next(answers) for _ in range(3))
                    is_showing = bool(state and role and state[0] >> _SHOWING & 1)
                    if is_showing:
                        node = Node(role, _states_in(state[0]), ref, self)
                        nodes.append(node)
                        parent.children.append(node)
                        unread.append((node, [Ref(*child) for child in children or []]))
                # Those rows of a list that show are one behind the other.
                if others and (is_showing or not parent.children):
                    unread.append((parent, others))
        self._read_words([node for node in nodes if is_of_interest(node)])
        return Tree(root.children)

    def name_of(self, ref: Ref) -> str:
        return self._bus.call(_name(ref)) or ""

    def text_of(self, ref: Ref) -> str:
        return self._texts_of([ref])[0]

    def description_of(self, ref: Ref) -> str:
        return self._bus.call(_property(ref, _ACCESSIBLE, "Description")) or ""

    def read_descriptions(self, nodes: list[Node]) -> None:
        """For those who want to know them of many things."""
        calls = (_property(node.ref, _ACCESSIBLE, "Description") for node in nodes)
        for node, description in zip(nodes, self._bus.call_all(calls)):
            node.description = description or ""

    def rect_of(self, ref: Ref) -> Rect | None:
        rect = self._bus.call(Call(ref, _COMPONENT, "GetExtents", "u", (_SCREEN,)))
        return Rect(*map(int, rect)) if rect else None

    def actions_of(self, nodes: list[Node]) -> list[list[str]]:
        """What can be done with each of them, by the names that are the same in all languages."""
        answers = self._bus.call_all(Call(node.ref, _ACTION, "GetActions") for node in nodes)
        return [[str(name) for name, _, _ in actions or []] for actions in answers]

    def pester(self, nodes: list[Node]) -> None:
        """Asks all that can be asked of things that may be gone, and doesn't care for answers."""
        questions = [
            *((_ACCESSIBLE, method, "", ()) for method in _ACCESSIBLE_QUESTIONS),
            (_ACCESSIBLE, "GetChildAtIndex", "i", (0,)),
            (_PROPERTIES, "Get", "ss", (_ACCESSIBLE, "Parent")),
            (_PROPERTIES, "Get", "ss", (_ACCESSIBLE, "ChildCount")),
            (_COMPONENT, "GetExtents", "u", (_SCREEN,)),
            (_COMPONENT, "GetAccessibleAtPoint", "iiu", (300, 120, _SCREEN)),
            (_ACTION, "GetActions", "", ()),
        ]
        self._bus.call_all(Call(node.ref, *question) for node in nodes for question in questions)

    def act(self, node: Node, action: int) -> bool:
        return bool(self._bus.call(Call(node.ref, _ACTION, "DoAction", "i", (action,))))

    def write(self, node: Node, text: str) -> bool:
        return bool(self._bus.call(Call(node.ref, _EDITABLE_TEXT, "SetTextContents", "s", (text,))))

    def _read_words(self, nodes: list[Node]) -> None:
        for node, name in zip(nodes, self._bus.call_all(_name(node.ref) for node in nodes)):
            node.name = name or ""
        with_text = [node for node in nodes if node.role == "text"]
        for node, text in zip(with_text, self._texts_of([node.ref for node in with_text])):
            node.text = text

    def _texts_of(self, refs: list[Ref]) -> list[str]:
        lengths = self._bus.call_all(_property(ref, _TEXT, "CharacterCount") for ref in refs)
        # An end beyond the text's own gives nothing at all.
        contents = self._bus.call_all(
            Call(ref, _TEXT, "GetText", "ii", (0, _end_of(length)))
            for ref, length in zip(refs, lengths)
        )
        return [content or "" for content in contents]


def _property(ref: Ref, interface: str, name: str) -> Call:
    return Call(ref, _PROPERTIES, "Get", "ss", (interface, name))


def _questions(ref: Ref) -> list[Call]:
    return [
        Call(ref, _ACCESSIBLE, "GetState"),
        _role(ref),
        Call(ref, _ACCESSIBLE, "GetChildren"),
    ]


def _name(ref: Ref) -> Call:
    return _property(ref, _ACCESSIBLE, "Name")


def _role(ref: Ref) -> Call:
    return Call(ref, _ACCESSIBLE, "GetRoleName")

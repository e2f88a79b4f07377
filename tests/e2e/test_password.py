# SPDX-License-Identifier: MIT
"""A brew that needs a password has the user asked for it in a window."""

from __future__ import annotations

import unittest
from typing import Any

from driver.application import Application, Companion
from driver.testcase import DesktopTest
from driver.waiting import wait_until

PROMPT = "[sudo] password for <b>mina</b>: "
BAT = "bat, 0.25.0 → 0.26.0"
FIELD = "[sudo] password for <b>mina</b>:"
# Asks before an upgrade as `sudo -A` does, in the environment that a real brew leaves it: its own
# choice of variables, what begins with its name, and a locale that it has set itself.
ASKING_BREW = """#!/bin/sh
if [ "$1" = upgrade ]; then
    answer=$(env -i HOME="$HOME" PATH="$PATH" DISPLAY="$DISPLAY" LC_ALL=C.UTF-8 \\
        SUDO_ASKPASS="$SUDO_ASKPASS" HOMEBREW_LUMORA_SESSION="$HOMEBREW_LUMORA_SESSION" \\
        sh -c 'echo $$ > {asking}.part; mv {asking}.part {asking}; exec "$SUDO_ASKPASS" "$1"' sh '{prompt}')
    status=$?
    printf '%s %s' "$status" "$answer" > {answer}.part
    mv {answer}.part {answer}
    [ "$status" = 0 ] || exit 1
fi
exec {brew} "$@"
"""


class Password(DesktopTest):
    updates = "Updates"

    def setUp(self) -> None:
        super().setUp()
        self.asking = self.prefix.folder / "asking"
        self.answer = self.prefix.folder / "answer"
        self.brew = self.prefix.folder / "bin/asking-brew"
        script = ASKING_BREW.format(
            asking=self.asking, answer=self.answer, brew=self.prefix.brew, prompt=PROMPT
        )
        self.brew.write_text(script, encoding="utf-8")
        self.brew.chmod(0o755)

    def start_upgrade(self, **options: Any) -> Application:
        """The application with an upgrade that has begun."""
        app = self.start("--brew", str(self.brew), "--appearance", "light", **options)
        app.choose_category(self.updates)
        app.find(BAT, role="list item")
        app.click_row_action("bat")
        return app

    def prompt(self) -> Companion:
        wait_until(self.asking.exists, "brew asks for a password")
        return Companion(self.desk, self.home, int(self.asking.read_text()))

    def wait_for_answer(self) -> str:
        wait_until(self.answer.exists, "brew has its answer")
        return self.answer.read_text(encoding="utf-8")

    def test_brew_gets_what_is_typed(self) -> None:
        app = self.start_upgrade()
        prompt = self.prompt()
        prompt.find(FIELD, role="label")
        prompt.wait_for_focus(FIELD)
        prompt.type("Secret")
        self.assertNotIn("ecret", prompt.tree().describe())
        prompt.press("Return")
        self.assertEqual(self.wait_for_answer(), "0 Secret")
        app.wait_gone(BAT)

    def test_nothing_spells_it_out(self) -> None:
        # Whoever is on the accessibility bus gets these.
        with self.desk.accessibility.changed_texts() as told:
            app = self.start_upgrade()
            prompt = self.prompt()
            prompt.wait_for_focus(FIELD)
            prompt.type("wxyz")
            prompt.press("BackSpace", "Return")
            self.assertEqual(self.wait_for_answer(), "0 wxy")
            # At the end the field is emptied.
            wait_until(
                lambda: any("'delete', 0, 3" in text for text in told()),
                lambda: f"the field's last change is told; there were {told()}",
            )
            app.wait_gone(BAT)
        for letter in "wxyz":
            self.assertNotIn(f"'{letter}'", str(told()))
        # How much has been typed is no secret: it can be heard, as it can be seen.
        self.assertIn("('insert', 2, 1, '•'", str(told()))

    def test_brew_fails_when_the_user_cancels(self) -> None:
        app = self.start_upgrade()
        prompt = self.prompt()
        prompt.wait_for_focus(FIELD)
        prompt.type("secret")
        prompt.click_button("Cancel")
        self.assertEqual(self.wait_for_answer(), "1 ")
        app.wait_gone("Running...")
        app.find(BAT, role="list item")

    def test_it_speaks_the_users_language(self) -> None:
        self.updates = "업데이트"
        self.home = self.desk.new_home("ko")
        self.start_upgrade()
        self.prompt().click_button("취소")
        self.assertEqual(self.wait_for_answer(), "1 ")

    def test_it_outlives_the_window(self) -> None:
        app = self.start_upgrade()
        prompt = self.prompt()
        prompt.wait_for_focus(FIELD)
        app.close_window()
        self.assertEqual(app.wait_ended()[0], 0)
        prompt.type("secret")
        prompt.press("Return")
        self.assertEqual(self.wait_for_answer(), "0 secret")
        self.assertEqual(self.prefix.wait_for_command("upgrade bat"), 0)

    def test_the_users_own_program_is_asked(self) -> None:
        own = self.home.folder / "own-askpass"
        own.write_text("#!/bin/sh\necho own\n", encoding="utf-8")
        own.chmod(0o755)
        app = self.start_upgrade(environment={"SUDO_ASKPASS": str(own)})
        self.assertEqual(self.wait_for_answer(), "0 own")
        app.wait_gone(BAT)


if __name__ == "__main__":
    unittest.main()

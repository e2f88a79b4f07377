#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Feeds check_includes.py good and bad trees."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from check_includes import Tree, read_floors, read_table

CHECKER = Path(__file__).with_name("check_includes.py")
TABLE = "core: ;\nmodel: ;\nmanager: model;core\nui: manager;\n"
START = "// SPDX-License-Identifier: MIT\n#pragma once\n"


class CheckIncludesTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name) / "src"
        self.qt_headers = Path(folder.name) / "qt"
        for header in ("QtCore/QString", "QtCore/qglobal.h", "QtGui/QColor", "QtWidgets/QLabel"):
            self.write(self.qt_headers / header, "")
        self.add("core/Run.h", START + "#include <string>\n")
        self.add("core/Run.cpp", '#include "Run.h"\n#include <unistd.h>\n')
        self.add("model/Package.h", START + "#include <QString>\n#include <QtCore/QList>\n")
        self.add("manager/Manager.h", START + '#include "Package.h"\n')
        self.add("manager/Manager.cpp", '#include "Manager.h"\n#include "Run.h"\n')
        self.add("ui/pages/Page.h", START + "#include <QLabel>\n")
        self.add("ui/Shell.cpp", '#include "Page.h"\n#include "Manager.h"\n#include "Shell.moc"\n')
        self.add("app/main.cpp", '#include "Run.h"\n#include "Page.h"\n#include <Manager.h>\n')

    def write(self, path, text):
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def add(self, name, text):
        self.write(self.root / name, text)

    def problems(self, table=TABLE):
        generated = self.root.parent / "generated"
        floors = read_floors(table)
        return Tree(
            self.root, read_table(table), "app", self.qt_headers, generated, floors
        ).check()

    def assert_complains(self, *expected, table=TABLE):
        self.assertEqual(self.problems(table), list(expected))

    def test_accepts_a_good_tree(self):
        self.assert_complains()

    def test_refuses_a_layer_that_is_not_on_the_line(self):
        self.add("ui/Peek.cpp", '\n#include "Run.h"\n')
        self.assert_complains("ui/Peek.cpp:2: ui includes Run.h of core")

    def test_refuses_the_wrong_direction(self):
        self.add("core/Up.cpp", '#  include "Manager.h"\n')
        self.assert_complains("core/Up.cpp:1: core includes Manager.h of manager")

    def test_looks_into_headers_and_sub_folders(self):
        self.add("ui/pages/deep/Peek.h", START + ' #include "Run.h"\n')
        self.assert_complains("ui/pages/deep/Peek.h:3: ui includes Run.h of core")

    def test_sees_through_paths_and_angle_brackets(self):
        self.add("ui/Peek.cpp", '#include "../core/Run.h"\n#include <Run.h>\n')
        self.assert_complains(
            "ui/Peek.cpp:1: ui includes ../core/Run.h of core",
            "ui/Peek.cpp:2: ui includes Run.h of core",
        )

    def test_takes_a_dependency_of_a_dependency_for_none(self):
        self.add("ui/Peek.cpp", '#include "Package.h"\n')
        self.assert_complains("ui/Peek.cpp:1: ui includes Package.h of model")

    def test_lets_nobody_include_the_program(self):
        self.add("app/Application.h", START)
        self.add("ui/Peek.cpp", '#include "Application.h"\n')
        self.assert_complains("ui/Peek.cpp:1: ui includes Application.h of app")

    def test_refuses_a_folder_without_a_line(self):
        self.add("extra/Extra.cpp", "")
        self.assert_complains("extra/Extra.cpp:1: extra has no line in the layer table")

    def test_refuses_headers_it_does_not_know(self):
        self.add("core/Lost.cpp", '#include "Nowhere.h"\n#include "Other.moc"\n')
        self.assert_complains(
            "core/Lost.cpp:1: Nowhere.h is no header of src/",
            "core/Lost.cpp:2: Other.moc is no header of src/",
        )

    def test_lets_everybody_include_what_the_build_generates(self):
        self.write(self.root.parent / "generated" / "Version.h", "")
        for layer in ("core", "ui", "app"):
            self.add(f"{layer}/Uses.cpp", '#include "Version.h"\n')
        self.assert_complains()

    def test_knows_templates_of_headers(self):
        self.add("core/Addresses.h.in", START)
        self.add("core/Uses.cpp", '#include "Addresses.h"\n')
        self.add("ui/Peek.cpp", '#include "Addresses.h"\n')
        self.assert_complains("ui/Peek.cpp:1: ui includes Addresses.h of core")

    def test_refuses_two_headers_of_one_name(self):
        self.add("ui/Run.h", START)
        self.assert_complains(
            "ui/Run.h:1: there is another Run.h: which one is meant can't be told"
        )

    def test_keeps_qt_out_of_core(self):
        self.add(
            "core/Qt.cpp", "#include <QString>\n#include <QtCore/QList>\n#include <qglobal.h>\n"
        )
        self.assert_complains(
            "core/Qt.cpp:1: core includes QString of QtCore",
            "core/Qt.cpp:2: core includes QtCore/QList of QtCore",
            "core/Qt.cpp:3: core includes qglobal.h of QtCore",
        )

    def test_keeps_widgets_out_of_the_model(self):
        self.add(
            "model/Label.cpp",
            "#include <QLabel>\n#include <QtNetwork/QSslKey>\n#include <QColor>\n",
        )
        self.assert_complains(
            "model/Label.cpp:1: model includes QLabel of QtWidgets",
            "model/Label.cpp:2: model includes QtNetwork/QSslKey of QtNetwork",
            "model/Label.cpp:3: model includes QColor of QtGui",
        )

    def test_does_not_guess_where_a_qt_header_is(self):
        self.add("model/Strange.cpp", "#include <QStrange>\n#include <QtTest>\n")
        self.assert_complains(
            "model/Strange.cpp:1: model includes QStrange of a module of Qt's that wasn't found",
            "model/Strange.cpp:2: model includes QtTest of a module of Qt's that wasn't found",
        )

    def test_still_tells_core_from_qt_without_qts_headers(self):
        self.qt_headers = None
        self.add("core/Qt.cpp", "#include <QString>\n")
        self.add("model/Label.cpp", "#include <QLabel>\n#include <QtWidgets/QLabel>\n")
        self.assert_complains(
            "core/Qt.cpp:1: core includes QString of QtCore",
            "model/Label.cpp:2: model includes QtWidgets/QLabel of QtWidgets",
        )

    def test_refuses_cycles(self):
        self.assert_complains(
            "layer table: a cycle through core, manager, ui",
            table="core: ui;\nmodel: ;\nmanager: model;core\nui: manager;\n",
        )

    def test_refuses_dependencies_on_nothing(self):
        self.assert_complains(
            "layer table: ui depends on ghost, which is no layer",
            table=TABLE + "ui: manager;ghost\n",
        )

    def test_holds_headers_to_their_first_lines(self):
        self.add("core/A.h", "#pragma once\n")
        self.add("core/B.h", "// SPDX-License-Identifier: MIT\n")
        self.add("core/C.h", START + START)
        self.assert_complains(
            "core/A.h:1: a header has exactly one SPDX line",
            "core/B.h:1: a header has one #pragma once",
            "core/C.h:1: a header has one #pragma once",
            "core/C.h:1: a header has exactly one SPDX line",
        )

    def add_floors(self):
        """Puts ui on two floors and returns the table that says so."""
        (self.root / "ui" / "Shell.cpp").unlink()
        self.add("app/main.cpp", '#include "pages/Page.h"\n')
        self.add("ui/widgets/Row.h", START)
        self.add("ui/pages/Page.cpp", '#include "pages/Page.h"\n#include "widgets/Row.h"\n')
        return TABLE.replace("ui: manager;", "ui: manager; | widgets;pages")

    def test_accepts_includes_that_point_down(self):
        self.assert_complains(table=self.add_floors())

    def test_refuses_an_include_of_a_floor_above(self):
        table = self.add_floors()
        self.add("ui/widgets/Row.cpp", '#include "widgets/Row.h"\n#include "pages/Page.h"\n')
        self.assert_complains(
            "ui/widgets/Row.cpp:2: widgets includes pages/Page.h, a floor above", table=table
        )

    def test_wants_the_floor_in_the_name(self):
        table = self.add_floors()
        self.add("ui/pages/Peek.cpp", '#include "Row.h"\n')
        self.add("app/main.cpp", '#include "Page.h"\n')
        self.assert_complains(
            "app/main.cpp:1: Page.h is included without its folder pages/",
            "ui/pages/Peek.cpp:1: Row.h is included without its folder widgets/",
            table=table,
        )

    def test_refuses_a_folder_that_is_no_floor(self):
        table = self.add_floors()
        self.add("ui/attic/Trunk.h", START)
        self.assert_complains("ui/attic/Trunk.h:1: attic is no floor of ui", table=table)

    def test_lets_a_layer_depend_on_some_floors_only(self):
        table = self.add_floors() + "extra: ui/widgets;\n"
        self.add("extra/Extra.cpp", '#include "widgets/Row.h"\n')
        self.assert_complains(table=table)
        self.add("extra/Peek.cpp", '#include "pages/Page.h"\n')
        self.assert_complains(
            "extra/Peek.cpp:1: extra includes pages/Page.h, above the floor widgets", table=table
        )

    def test_knows_whose_floors_they_are(self):
        self.assert_complains(
            "layer table: extra depends on attic, which is no layer",
            table=TABLE + "extra: attic/widgets;\n",
        )

    def test_refuses_an_empty_tree(self):
        empty = self.root / "core" / "none"
        self.assertEqual(Tree(empty, {}).check(), [f"{empty}: no sources found"])

    def run_checker(self):
        table = self.root.parent / "layers.txt"
        self.write(table, TABLE)
        options = ["--program", "app", "--qt-headers", str(self.qt_headers)]
        return subprocess.run(
            [sys.executable, str(CHECKER), str(table), str(self.root), *options],
            capture_output=True,
            text=True,
            check=False,
        )

    def test_reports_success_as_a_command(self):
        result = self.run_checker()
        self.assertEqual(result.stdout, "8 files of 4 layers, 0 problems\n")
        self.assertEqual(result.returncode, 0)

    def test_reports_failure_as_a_command(self):
        self.add("ui/Peek.cpp", '#include "Run.h"\n')
        result = self.run_checker()
        self.assertEqual(
            result.stdout,
            "ui/Peek.cpp:1: ui includes Run.h of core\n9 files of 4 layers, 1 problems\n",
        )
        self.assertEqual(result.returncode, 1)


if __name__ == "__main__":
    unittest.main()

#!/usr/bin/env -S python3 -IS -X utf8
# SPDX-License-Identifier: MIT
"""The sample `brew`: its state lies beside it, wherever the prefix has been moved to."""

import os
import sys

PREFIX = os.path.dirname(os.path.dirname(os.path.realpath(__file__)))
sys.path.insert(0, os.path.join(PREFIX, "Library", "sample"))

from samplebrew.main import main  # noqa: E402

sys.exit(main(PREFIX, sys.argv[1:]))

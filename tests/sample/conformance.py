# SPDX-License-Identifier: MIT
"""Records the sample `brew` and runs the conformance tests, the arguments, on that.

Nobody needs a real Homebrew to know that the way from `tools/record-brew` to the decoders holds.
"""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

from sample_prefix import SAMPLE, SamplePrefix

with tempfile.TemporaryDirectory() as folder:
    prefix = SamplePrefix(Path(folder, "prefix"), "--pace", "0")
    recorded = Path(folder, "recorded")
    recorder = SAMPLE.parent / "tools" / "record-brew"
    subprocess.run([sys.executable, recorder, recorded, "--brew", prefix.brew], check=True)
    environment = os.environ | {"LUMORA_RECORDED": str(recorded)}
    for test in sys.argv[1:]:
        subprocess.run([test], check=True, env=environment)

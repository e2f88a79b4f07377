# SPDX-License-Identifier: MIT
"""Makes prefixes for the sample Homebrew; nothing in here is needed to run one."""

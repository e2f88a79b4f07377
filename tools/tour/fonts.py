# SPDX-License-Identifier: MIT
"""The same fonts on every machine that has them, so that its pictures look alike."""

from __future__ import annotations

from pathlib import Path

_CJK = {"ko": "KR", "ja": "JP"}

_CONFIGURATION = """<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig>
  <include ignore_missing="yes">/etc/fonts/fonts.conf</include>
  <alias binding="strong">
    <family>sans-serif</family>
    <prefer>
      <family>{family}</family>
      <family>Noto Sans CJK {cjk}</family>
    </prefer>
  </alias>
  <alias binding="strong">
    <family>monospace</family>
    <prefer>
      <family>Liberation Mono</family>
      <family>DejaVu Sans Mono</family>
      <family>Noto Sans Mono CJK {cjk}</family>
    </prefer>
  </alias>
  <match target="font">
    <edit name="antialias" mode="assign"><bool>true</bool></edit>
    <edit name="hintstyle" mode="assign"><const>hintslight</const></edit>
    <edit name="rgba" mode="assign"><const>none</const></edit>
  </match>
</fontconfig>
"""


def write_configuration(path: Path, language: str, family: str) -> None:
    """Families that are not installed are passed over."""
    configuration = _CONFIGURATION.format(family=family, cjk=_CJK.get(language, "JP"))
    path.write_text(configuration, encoding="utf-8")

# SPDX-License-Identifier: MIT
"""Packs a bundle into a release archive as nobody should, for tests.

Usage: make_archive.py KIND ARCHIVE BUNDLE OUTSIDE

BUNDLE is the folder to pack as Lumora.app. OUTSIDE is a folder that no archive may write
to: some kinds try to leave a file called "owned" there.
"""

import io
import pathlib
import sys
import tarfile


def add_text(archive, name, text="owned\n", mode=0o755):
    member = tarfile.TarInfo(name)
    member.size = len(text)
    member.mode = mode
    archive.addfile(member, io.BytesIO(text.encode()))


def add_link(archive, name, target, kind=tarfile.SYMTYPE):
    member = tarfile.TarInfo(name)
    member.type = kind
    member.linkname = target
    archive.addfile(member)


def add_bundle(archive, bundle, name="Lumora.app"):
    def verbatim(member):
        # Python would take the leading slash away.
        member.name = name + member.name[len("bundle"):]
        return member

    archive.add(bundle, "bundle", filter=verbatim)


def other_name(archive, bundle, outside):
    add_bundle(archive, bundle, "Another.app")


def bundle_is_file(archive, bundle, outside):
    add_text(archive, "Lumora.app")


def bundle_is_empty(archive, bundle, outside):
    add_text(archive, "Lumora.app/Contents/Info.plist", "<plist/>")


def absolute_names(archive, bundle, outside):
    add_text(archive, f"{outside}/owned")
    add_bundle(archive, bundle, f"{outside}/Lumora.app")


def parent_names(archive, bundle, outside):
    # Enough of them to arrive at the root from anywhere.
    up = "../" * 20
    add_text(archive, f"{up}{outside.lstrip('/')}/owned")
    add_bundle(archive, bundle, f"{up}{outside.lstrip('/')}/Lumora.app")
    add_bundle(archive, bundle, "../Lumora.app")


def bundle_is_link(archive, bundle, outside):
    add_link(archive, "Lumora.app", bundle)


def contents_is_link(archive, bundle, outside):
    add_link(archive, "Lumora.app/Contents", f"{bundle}/Contents")


def link_in_bundle(archive, bundle, outside):
    add_bundle(archive, bundle)
    add_link(archive, "Lumora.app/Contents/Resources/link", outside)


def relative_link_in_bundle(archive, bundle, outside):
    add_bundle(archive, bundle)
    add_link(archive, "Lumora.app/Contents/Resources/link", "../../../elsewhere")


def write_through_link(archive, bundle, outside):
    add_link(archive, "Lumora.app/Contents/link", outside)
    add_text(archive, "Lumora.app/Contents/link/owned")
    add_bundle(archive, bundle)


def write_through_sibling_link(archive, bundle, outside):
    add_link(archive, "link", outside)
    add_text(archive, "link/owned")
    add_bundle(archive, bundle)


def write_through_parent_link(archive, bundle, outside):
    up = "../" * 20
    add_link(archive, "link", f"{up}{outside.lstrip('/')}")
    add_text(archive, "link/owned")
    add_bundle(archive, bundle)


def write_through_hard_link(archive, bundle, outside):
    add_link(archive, "link", f"{outside}/precious", tarfile.LNKTYPE)
    add_text(archive, "link")
    add_bundle(archive, bundle)


def main(kind, archive, bundle, outside):
    pack = globals()[kind.replace("-", "_")]
    with tarfile.open(archive, "w:gz", format=tarfile.GNU_FORMAT) as opened:
        pack(opened, str(pathlib.Path(bundle)), outside)


if __name__ == "__main__":
    main(*sys.argv[1:])

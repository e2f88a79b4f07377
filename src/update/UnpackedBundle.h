// SPDX-License-Identifier: MIT
#pragma once

class QString;

/// Looks at what has come out of a release archive.
namespace UnpackedBundle {

/// Whether there is a bundle that can take the place of the running one: a folder with an
/// executable, without a link that leads out of it, and with every file that its manifest
/// lists, as long as listed there.
///
/// The manifest is Contents/Resources/manifest.txt, with lines of a size in bytes, a blank
/// and a path in the bundle; a bundle without one is taken as it is. It tells a bundle whose
/// unpacking broke off, for lack of space perhaps, from a whole one.
[[nodiscard]] bool isWhole(const QString& path);

} // namespace UnpackedBundle

// SPDX-License-Identifier: MIT
#pragma once

class ApplicationBundle;
class QString;

/// Whether the update script will be able to swap the bundles.
///
/// It runs when nobody is there any more to tell about a failure, and begins by removing
/// the old bundle. What would stop it after that has to be found before.
namespace Replacement {

/// Throws UpdateFailure if the bundle at `appPath` can't be removed whole, or is another
/// application's.
void checkRemovable(const QString& appPath, const ApplicationBundle& running);

/// Whether there is a bundle that can take the place of the running one: a folder with an
/// executable, without a link that leads out of it, and with every file that its manifest
/// lists, as long as listed there.
///
/// The manifest is Contents/Resources/manifest.txt, with lines of a size in bytes, a blank
/// and a path in the bundle; a bundle without one is taken as it is. It tells a bundle whose
/// unpacking broke off, for lack of space perhaps, from a whole one.
[[nodiscard]] bool isWhole(const QString& newPath);

/// Throws UpdateFailure if the new bundle doesn't fit where the old one is, which may lack room
/// for its content or for the number of its files.
void checkRoom(const QString& appPath, const QString& newPath);

} // namespace Replacement

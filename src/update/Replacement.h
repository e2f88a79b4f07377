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

/// Throws UpdateFailure if the new bundle doesn't fit where the old one is.
void checkRoom(const QString& appPath, const QString& newPath);

} // namespace Replacement

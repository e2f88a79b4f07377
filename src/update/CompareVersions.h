// SPDX-License-Identifier: MIT
#pragma once

class QStringView;

/// 1, 0 or -1: whether version `a` is newer than, the same as or older than `b`.
///
/// The pieces between the dots are compared as numbers, missing ones counting as 0; pieces
/// that aren't whole numbers are left out, so that "1.x.3" is the same as "1.3".
[[nodiscard]] int compareVersions(QStringView a, QStringView b);

/// Whether a version may become part of a path in a shell script: nothing but letters and digits
/// of ASCII and "._+-".
[[nodiscard]] bool isPlainVersion(QStringView version);

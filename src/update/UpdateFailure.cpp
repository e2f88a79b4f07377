// SPDX-License-Identifier: MIT
#include "UpdateFailure.h"

using namespace Qt::StringLiterals;

UpdateFailure::UpdateFailure(const QString& path, std::error_code error)
    : UpdateFailure(path + u": "_s + QString::fromStdString(error.message())) {}

UpdateFailure::UpdateFailure(const QString& path, int error)
    : UpdateFailure(path, std::error_code(error, std::generic_category())) {}

const char* UpdateFailure::what() const noexcept {
    return "the update failed";
}

// SPDX-License-Identifier: MIT
#include "UpdateFailure.h"

#include "L10n.h"

using namespace Qt::StringLiterals;

namespace {

QString textOf(UpdateError error) {
    switch (error) {
    case UpdateError::downloadFailed:
        return L10n::downloadFailed();
    case UpdateError::appBundleNotFound:
        return L10n::appBundleNotFound();
    case UpdateError::extractFailed:
        break;
    }
    return L10n::extractFailed();
}

} // namespace

UpdateFailure::UpdateFailure(const QString& path, std::error_code error)
    : UpdateFailure(path + u": "_s + QString::fromStdString(error.message())) {}

UpdateFailure::UpdateFailure(const QString& path, int error)
    : UpdateFailure(path, std::error_code(error, std::generic_category())) {}

UpdateFailure UpdateFailure::anotherUpdate() {
    return UpdateFailure(u"Another update is being installed."_s);
}

QString UpdateFailure::description() const {
    return m_error ? textOf(*m_error) : m_description;
}

const char* UpdateFailure::what() const noexcept {
    return "the update failed";
}

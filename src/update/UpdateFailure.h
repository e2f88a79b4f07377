// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <exception>
#include <optional>
#include <system_error>

enum class UpdateError { downloadFailed, appBundleNotFound, extractFailed };

/// Ends an update, with a description in words for the user.
class UpdateFailure final : public std::exception {
public:
    explicit UpdateFailure(QString description) : m_description(std::move(description)) {}

    /// In the user's language at the moment it is asked for.
    explicit UpdateFailure(UpdateError error) : m_error(error) {}

    /// What the system says about this file.
    UpdateFailure(const QString& path, std::error_code error);
    /// The same for an errno value.
    UpdateFailure(const QString& path, int error);

    /// Two updates at a time would be one too many.
    [[nodiscard]] static UpdateFailure anotherUpdate();

    [[nodiscard]] QString description() const;

    [[nodiscard]] const char* what() const noexcept override;

private:
    std::optional<UpdateError> m_error;
    QString m_description;
};

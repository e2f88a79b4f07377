// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// A variable of the environment that has another value for as long as this lives.
///
/// To be used where no other thread reads the environment.
class ChangedVariable final {
public:
    /// A null value takes the variable away; `name` outlives this.
    ChangedVariable(const char* name, const QByteArray& value)
        : m_name(name), m_before(qgetenv(name)) {
        set(value);
    }

    ChangedVariable(const ChangedVariable&) = delete;
    ChangedVariable& operator=(const ChangedVariable&) = delete;

    ~ChangedVariable() { set(m_before); }

private:
    void set(const QByteArray& value) const {
        if (value.isNull())
            qunsetenv(m_name);
        else
            qputenv(m_name, value);
    }

    const char* m_name;
    QByteArray m_before;
};

// SPDX-License-Identifier: MIT
#pragma once

#include "ObservableObject.h"
#include "PublishedSignal.h"

#include <utility>

/// A property whose owner announces each change and that offers its new values to
/// subscribers of its own.
///
/// Setting it announces exactly once, before the value changes, also when the new value
/// equals the old one. Interface thread only; the owner outlives the property.
template <class T>
class Published final {
public:
    explicit Published(ObservableObject& owner, T initial = {})
        : m_owner(owner), m_value(std::move(initial)) {}

    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    [[nodiscard]] const T& get() const { return m_value; }

    [[nodiscard]] const T& operator*() const { return m_value; }

    [[nodiscard]] const T* operator->() const { return &m_value; }

    void set(T value) {
        Q_EMIT m_owner.objectWillChange();
        m_value = std::move(value);
        Q_EMIT m_signal.changed();
    }

    /// Calls `receive` with every value set from now on, until `context` is destroyed.
    template <class Receive>
    void subscribe(QObject* context, Receive receive) {
        QObject::connect(&m_signal, &PublishedSignal::changed, context,
                         [this, receive = std::move(receive)] { receive(m_value); });
    }

private:
    ObservableObject& m_owner;
    T m_value;
    PublishedSignal m_signal;
};

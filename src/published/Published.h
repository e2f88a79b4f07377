// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <utility>

/// An object that announces, before each change of a published property, that one is coming.
class ObservableObject : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// A property is about to change; it still has its old value.
    void objectWillChange();
};

/// The part of a published property that Qt's signals need: they can't live in a template.
class PublishedSignal final : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void changed();
};

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

    [[nodiscard]] const T& operator*() const { return m_value; }

    [[nodiscard]] const T* operator->() const { return &m_value; }

    void set(T value) {
        update([&value](T& current) { current = std::move(value); });
    }

    /// The same, where a value of megabytes is to grow in place.
    template <class Change>
    void update(Change change) {
        Q_EMIT m_owner.objectWillChange();
        change(m_value);
        Q_EMIT m_signal.changed();
    }

    /// Calls `receive` with every value set from now on, until `context` is destroyed.
    template <class Receive>
    void subscribe(const QObject* context, Receive receive) const {
        QObject::connect(&m_signal, &PublishedSignal::changed, context,
                         [this, receive = std::move(receive)] { receive(m_value); });
    }

private:
    ObservableObject& m_owner;
    T m_value;
    PublishedSignal m_signal;
};

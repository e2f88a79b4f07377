// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

class BrewManager;
template <class T>
class Published;

/// Notes what an observer of a BrewManager gets to see: a line of text for every change of
/// a published property, in the order of the changes.
///
/// A change is in order when it is announced once and the property still has its old value
/// at that moment; its line reads `announced: isSearching = true`. Any other change says
/// in place of "announced" what was wrong. The manager outlives the recorder's interest:
/// destroying either of them first is fine.
class PublicationRecorder final {
public:
    /// `onLine`, if given, gets each line as soon as the change has been made.
    explicit PublicationRecorder(BrewManager& manager,
                                 std::function<void(const QString&)> onLine = {});

    /// The lines so far, the complaint about a loose announcement included.
    [[nodiscard]] QStringList lines() const;
    /// A complaint if the last announcement has not been followed by a change.
    [[nodiscard]] std::optional<QString> looseAnnouncement() const;
    void forget();

private:
    struct Property {
        QString name;
        std::function<QString()> text;
        QString lastText;
        QString textWhenAnnounced;
    };

    template <class T>
    void watch(const QString& name, Published<T>& property);
    void noteAnnouncement();
    void noteChange(Property& property);

    std::vector<Property> m_properties;
    int m_announcements{};
    QStringList m_lines;
    std::function<void(const QString&)> m_onLine;
    /// Declared last: its end ends the subscriptions before anything they use is gone.
    QObject m_context;
};

// SPDX-License-Identifier: MIT
#include "PublicationRecorder.h"

#include "BrewManager.h"
#include "TextForm.h"

using namespace Qt::StringLiterals;

PublicationRecorder::PublicationRecorder(BrewManager& manager,
                                         std::function<void(const QString&)> onLine)
    : m_onLine(std::move(onLine)) {
    QObject::connect(&manager, &ObservableObject::objectWillChange, &m_context,
                     [this] { noteAnnouncement(); });
    watch(u"formulae"_s, manager.formulae);
    watch(u"casks"_s, manager.casks);
    watch(u"outdatedFormulae"_s, manager.outdatedFormulae);
    watch(u"outdatedCasks"_s, manager.outdatedCasks);
    watch(u"taps"_s, manager.taps);
    watch(u"searchResults"_s, manager.searchResults);
    watch(u"isLoadingFormulae"_s, manager.isLoadingFormulae);
    watch(u"isLoadingCasks"_s, manager.isLoadingCasks);
    watch(u"isLoadingOutdated"_s, manager.isLoadingOutdated);
    watch(u"isLoadingTaps"_s, manager.isLoadingTaps);
    watch(u"isSearching"_s, manager.isSearching);
    watch(u"isRunningOperation"_s, manager.isRunningOperation);
    watch(u"operationOutput"_s, manager.operationOutput);
    watch(u"errorMessage"_s, manager.errorMessage);
    watch(u"brewAvailable"_s, manager.brewAvailable);
}

template <class T>
void PublicationRecorder::watch(const QString& name, Published<T>& property) {
    const std::size_t index = m_properties.size();
    m_properties.push_back({.name = name,
                            .text = [&property] { return textForm(*property); },
                            .lastText = textForm(*property),
                            .textWhenAnnounced = {}});
    property.subscribe(&m_context,
                       [this, index](const T& /*value*/) { noteChange(m_properties[index]); });
}

void PublicationRecorder::noteAnnouncement() {
    ++m_announcements;
    for (Property& property : m_properties)
        property.textWhenAnnounced = property.text();
}

void PublicationRecorder::noteChange(Property& property) {
    QString how = u"announced"_s;
    if (m_announcements == 0)
        how = u"not announced"_s;
    else if (m_announcements > 1)
        how = u"announced %1 times"_s.arg(m_announcements);
    else if (property.textWhenAnnounced != property.lastText)
        how = u"announced too late"_s;
    m_announcements = 0;
    property.lastText = property.text();

    m_lines.append(how + u": "_s + property.name + u" = "_s + property.lastText);
    if (m_onLine)
        m_onLine(m_lines.constLast());
}

std::optional<QString> PublicationRecorder::looseAnnouncement() const {
    if (m_announcements == 0)
        return std::nullopt;
    return u"announced without a change"_s;
}

QStringList PublicationRecorder::lines() const {
    QStringList lines = m_lines;
    if (const auto complaint = looseAnnouncement())
        lines.append(*complaint);
    return lines;
}

void PublicationRecorder::forget() {
    m_lines.clear();
    m_announcements = 0;
}

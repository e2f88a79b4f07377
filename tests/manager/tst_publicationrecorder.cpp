// SPDX-License-Identifier: MIT
#include "BrewAt.h"
#include "BrewManager.h"
#include "Lines.h"
#include "PublicationRecorder.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// A recorder that saw nothing wrong in anything would let every other test pass.
class PublicationRecorderTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void notesChangesInOrder();
    void notesAnnouncementsThatDoNotFit();
    void notesAnAnnouncementThatComesTooLate();
    void notesALooseAnnouncement();
    void handsEachLineOverAtOnce();
    void survivesItsManager();

private:
    const FakeBrew m_brew;
};

void PublicationRecorderTest::notesChangesInOrder() {
    BrewManager manager(brewAt(m_brew));
    const PublicationRecorder recorder(manager);
    manager.isSearching.set(true);
    manager.taps.set({{u"user/tools"_s}});
    manager.isSearching.set(true);
    manager.errorMessage.set(u"no\n"_s);
    QCOMPARE(recorder.lines(), lines(uR"(
        announced: isSearching = true
        announced: taps = 1: "user/tools"
        announced: isSearching = true
        announced: errorMessage = "no\n"
    )"_s));
}

void PublicationRecorderTest::notesAnnouncementsThatDoNotFit() {
    BrewManager manager(brewAt(m_brew));
    const PublicationRecorder recorder(manager);
    bool isFirst = true;
    connect(&manager, &ObservableObject::objectWillChange, this, [&] {
        if (std::exchange(isFirst, false))
            manager.isLoadingTaps.set(true);
    });
    manager.isSearching.set(true);
    QCOMPARE(recorder.lines(), lines(uR"(
        announced 2 times: isLoadingTaps = true
        not announced: isSearching = true
    )"_s));
}

void PublicationRecorderTest::notesAnAnnouncementThatComesTooLate() {
    BrewManager manager(brewAt(m_brew));
    const PublicationRecorder recorder(manager);
    const_cast<bool&>(*manager.isSearching) = true;
    manager.isSearching.set(true);
    manager.isSearching.set(false);
    QCOMPARE(recorder.lines(), lines(uR"(
        announced too late: isSearching = true
        announced: isSearching = false
    )"_s));
}

void PublicationRecorderTest::notesALooseAnnouncement() {
    BrewManager manager(brewAt(m_brew));
    const PublicationRecorder recorder(manager);
    manager.isSearching.set(true);
    QCOMPARE(recorder.looseAnnouncement(), std::nullopt);
    Q_EMIT manager.objectWillChange();
    QCOMPARE(recorder.looseAnnouncement(), u"announced without a change"_s);
    QCOMPARE(recorder.lines(), lines(uR"(
        announced: isSearching = true
        announced without a change
    )"_s));
}

void PublicationRecorderTest::handsEachLineOverAtOnce() {
    BrewManager manager(brewAt(m_brew));
    QStringList handedOver;
    PublicationRecorder recorder(manager, [&](const QString& line) { handedOver.append(line); });
    manager.brewAvailable.set(false);
    QCOMPARE(handedOver, QStringList{u"announced: brewAvailable = false"_s});
    recorder.forget();
    QCOMPARE(recorder.lines(), QStringList());
    manager.brewAvailable.set(true);
    QCOMPARE(recorder.lines(), QStringList{u"announced: brewAvailable = true"_s});
    QCOMPARE(handedOver.size(), 2);
}

void PublicationRecorderTest::survivesItsManager() {
    auto manager = std::make_unique<BrewManager>(brewAt(m_brew));
    const PublicationRecorder recorder(*manager);
    manager->isSearching.set(true);
    manager.reset();
    QCOMPARE(recorder.lines(), QStringList{u"announced: isSearching = true"_s});
}

QTEST_GUILESS_MAIN(PublicationRecorderTest)
#include "tst_publicationrecorder.moc"

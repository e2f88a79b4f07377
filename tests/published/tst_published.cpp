// SPDX-License-Identifier: MIT
#include "Published.h"

#include <QtTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

class Owner final : public ObservableObject {
public:
    Published<int> number{*this, 1};
    Published<QString> text{*this};
};

} // namespace

class PublishedTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startsWithItsInitialValue();
    void announcesEachChangeOnceBeforeIt_data();
    void announcesEachChangeOnceBeforeIt();
    void offersEachValueToItsOwnSubscribers();
    void offersTheValueOnceItIsInPlace();
    void tellsOfAChangeInPlaceAsOfAnyOther();
    void givesEachSubscriberEachValue();
    void endsASubscriptionWithItsContext();
};

void PublishedTest::startsWithItsInitialValue() {
    const Owner owner;
    QCOMPARE(*owner.number, 1);
    QCOMPARE(*owner.text, QString());
}

void PublishedTest::announcesEachChangeOnceBeforeIt_data() {
    QTest::addColumn<int>("value");
    QTest::newRow("new value") << 2;
    QTest::newRow("equal value") << 1;
}

void PublishedTest::announcesEachChangeOnceBeforeIt() {
    QFETCH(int, value);
    Owner owner;
    QList<int> valuesWhenAnnounced;
    connect(&owner, &ObservableObject::objectWillChange, this,
            [&] { valuesWhenAnnounced.append(*owner.number); });

    owner.number.set(value);
    QCOMPARE(valuesWhenAnnounced, QList<int>{1});
    QCOMPARE(*owner.number, value);

    owner.text.set(u"changed"_s);
    QCOMPARE(valuesWhenAnnounced, (QList<int>{1, value}));
    QCOMPARE(owner.text->size(), 7);
}

void PublishedTest::offersEachValueToItsOwnSubscribers() {
    Owner owner;
    QList<int> numbers;
    QStringList texts;
    owner.number.subscribe(this, [&](int number) { numbers.append(number); });
    owner.text.subscribe(this, [&](const QString& text) { texts.append(text); });
    QVERIFY(numbers.isEmpty());

    owner.number.set(2);
    owner.text.set(u"a"_s);
    owner.number.set(2);
    owner.number.set(3);

    QCOMPARE(numbers, (QList<int>{2, 2, 3}));
    QCOMPARE(texts, QStringList{u"a"_s});
}

void PublishedTest::offersTheValueOnceItIsInPlace() {
    Owner owner;
    QStringList events;
    connect(&owner, &ObservableObject::objectWillChange, this,
            [&] { events.append(u"announced at %1"_s.arg(*owner.number)); });
    owner.number.subscribe(this, [&](int number) {
        events.append(u"offered %1 at %2"_s.arg(number).arg(*owner.number));
    });

    owner.number.set(2);

    QCOMPARE(events, (QStringList{u"announced at 1"_s, u"offered 2 at 2"_s}));
}

void PublishedTest::tellsOfAChangeInPlaceAsOfAnyOther() {
    Owner owner;
    owner.text.set(u"a"_s);
    QStringList events;
    connect(&owner, &ObservableObject::objectWillChange, this,
            [&] { events.append(u"announced at "_s + *owner.text); });
    owner.text.subscribe(this, [&](const QString& text) { events.append(u"offered "_s + text); });
    owner.text.update([](QString& text) { text += u'b'; });
    QCOMPARE(events, (QStringList{u"announced at a"_s, u"offered ab"_s}));
}

void PublishedTest::givesEachSubscriberEachValue() {
    Owner owner;
    QList<int> first;
    QList<int> second;
    owner.number.subscribe(this, [&](int number) { first.append(number); });
    owner.number.set(2);
    owner.number.subscribe(this, [&](int number) { second.append(number); });
    owner.number.set(3);
    QCOMPARE(first, (QList<int>{2, 3}));
    QCOMPARE(second, QList<int>{3});
}

void PublishedTest::endsASubscriptionWithItsContext() {
    Owner owner;
    QList<int> numbers;
    auto context = std::make_unique<QObject>();
    owner.number.subscribe(context.get(), [&](int number) { numbers.append(number); });
    owner.number.set(2);
    context.reset();
    owner.number.set(3);
    QCOMPARE(numbers, QList<int>{2});
}

QTEST_GUILESS_MAIN(PublishedTest)
#include "tst_published.moc"

// SPDX-License-Identifier: MIT
#include "UiTest.h"
#include "widgets/FlowLayout.h"

#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

using Sizes = QList<QSize>;
using Points = QList<QPoint>;

constexpr int unlimited = -1;

class Box final : public QWidget {
public:
    explicit Box(QSize size) : m_size(size) {}

    [[nodiscard]] QSize sizeHint() const override { return m_size; }

private:
    QSize m_size;
};

/// A widget that is laid out by a flow of boxes.
struct Flow final {
    explicit Flow(const Sizes& sizes, int spacing = 6) : layout(new FlowLayout(spacing, &host)) {
        for (const QSize size : sizes) {
            boxes.append(new Box(size));
            layout->addWidget(boxes.constLast());
        }
    }

    [[nodiscard]] Points places() const {
        Points places;
        for (const QWidget* const box : boxes)
            places.append(box->pos());
        return places;
    }

    QWidget host;
    FlowLayout* layout;
    QList<QWidget*> boxes;
};

} // namespace

class FlowLayoutTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wrapsWhereTheWidthEnds_data();
    void wrapsWhereTheWidthEnds();
    void hasASpacingOfSixByDefault();
    void wrapsAnewWhenItsWidgetIsResized();
    void startsAtTheCornerOfTheRoomItIsGiven();
    void givesEveryItemItsIdealSize();
    void makesTheColumnItIsInTallEnough();
    void isAsNarrowAsItsWidestItemAtLeast();
    void forgetsAnItemThatIsTaken();
};

void FlowLayoutTest::wrapsWhereTheWidthEnds_data() {
    QTest::addColumn<int>("spacing");
    QTest::addColumn<int>("width");
    QTest::addColumn<Sizes>("sizes");
    QTest::addColumn<Points>("places");
    QTest::addColumn<QSize>("total");
    const QSize box(40, 20);

    QTest::newRow("three boxes, two fit")
        << 6 << 100 << Sizes{box, box, box} << Points{{0, 0}, {46, 0}, {0, 26}} << QSize(92, 46);
    QTest::newRow("nothing") << 6 << 100 << Sizes{} << Points{} << QSize(0, 0);
    QTest::newRow("one box keeps the spacing behind it")
        << 6 << 100 << Sizes{box} << Points{{0, 0}} << QSize(46, 20);
    QTest::newRow("ends exactly at the width")
        << 6 << 86 << Sizes{box, box} << Points{{0, 0}, {46, 0}} << QSize(92, 20);
    QTest::newRow("a pixel too narrow")
        << 6 << 85 << Sizes{box, box} << Points{{0, 0}, {0, 26}} << QSize(46, 46);
    QTest::newRow("wider than the room, then another")
        << 6 << 100 << Sizes{{150, 20}, box} << Points{{0, 0}, {0, 26}} << QSize(156, 46);
    QTest::newRow("another, then wider than the room")
        << 6 << 100 << Sizes{box, {150, 20}, box} << Points{{0, 0}, {0, 26}, {0, 52}}
        << QSize(156, 72);
    QTest::newRow("no limit") << 6 << unlimited << Sizes{box, box, box}
                              << Points{{0, 0}, {46, 0}, {92, 0}} << QSize(138, 20);
    QTest::newRow("no room at all")
        << 6 << 0 << Sizes{box, box} << Points{{0, 0}, {0, 26}} << QSize(46, 46);
    QTest::newRow("the tallest of a line counts")
        << 6 << 100 << Sizes{{40, 10}, {40, 30}, {40, 20}, {40, 5}}
        << Points{{0, 0}, {46, 0}, {0, 36}, {46, 36}} << QSize(92, 56);
    QTest::newRow("other spacing")
        << 10 << 100 << Sizes{box, box, box} << Points{{0, 0}, {50, 0}, {0, 30}} << QSize(100, 50);
    QTest::newRow("no spacing") << 0 << 80 << Sizes{box, box, box}
                                << Points{{0, 0}, {40, 0}, {0, 20}} << QSize(80, 40);
}

void FlowLayoutTest::wrapsWhereTheWidthEnds() {
    QFETCH(int, spacing);
    QFETCH(int, width);
    QFETCH(Sizes, sizes);
    QFETCH(Points, places);
    QFETCH(QSize, total);
    const Flow flow(sizes, spacing);

    const FlowLayout::Arrangement arrangement = flow.layout->arrange(width);
    QCOMPARE(Points(arrangement.positions.begin(), arrangement.positions.end()), places);
    QCOMPARE(arrangement.size, total);
    if (width == unlimited)
        QCOMPARE(flow.layout->sizeHint(), total);
    else
        QCOMPARE(flow.layout->heightForWidth(width), total.height());
}

void FlowLayoutTest::hasASpacingOfSixByDefault() {
    QCOMPARE(FlowLayout().spacing(), 6);
}

void FlowLayoutTest::wrapsAnewWhenItsWidgetIsResized() {
    Flow flow({{40, 20}, {40, 20}, {40, 20}});
    flow.host.resize(100, 100);
    flow.host.show();
    QTRY_COMPARE(flow.places(), (Points{{0, 0}, {46, 0}, {0, 26}}));
    flow.host.resize(200, 100);
    QTRY_COMPARE(flow.places(), (Points{{0, 0}, {46, 0}, {92, 0}}));
    flow.host.resize(60, 100);
    QTRY_COMPARE(flow.places(), (Points{{0, 0}, {0, 26}, {0, 52}}));
}

void FlowLayoutTest::startsAtTheCornerOfTheRoomItIsGiven() {
    const Flow flow({{40, 20}, {40, 20}});
    flow.layout->setGeometry(QRect(30, 7, 60, 100));
    QCOMPARE(flow.places(), (Points{{30, 7}, {30, 33}}));
}

void FlowLayoutTest::givesEveryItemItsIdealSize() {
    const Flow flow({{40, 20}, {200, 9}});
    flow.layout->setGeometry(QRect(0, 0, 100, 100));
    QCOMPARE(flow.boxes.at(0)->size(), QSize(40, 20));
    QCOMPARE(flow.boxes.at(1)->size(), QSize(200, 9));
}

void FlowLayoutTest::makesTheColumnItIsInTallEnough() {
    QWidget host;
    auto* const column = new QVBoxLayout(&host);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* const flow = new FlowLayout;
    column->addLayout(flow);
    for (int i = 0; i < 3; ++i)
        flow->addWidget(new Box({40, 20}));
    auto* const below = new Box({10, 10});
    column->addWidget(below);
    column->addStretch();
    host.resize(100, 300);
    host.show();
    QTRY_COMPARE(below->y(), 46);
    host.resize(50, 300);
    QTRY_COMPARE(below->y(), 72);
}

void FlowLayoutTest::isAsNarrowAsItsWidestItemAtLeast() {
    const Flow flow({{40, 20}, {70, 20}, {30, 20}});
    for (QWidget* const box : flow.boxes)
        box->setMinimumSize(box->sizeHint());
    QCOMPARE(flow.layout->minimumSize().width(), 70);
}

void FlowLayoutTest::forgetsAnItemThatIsTaken() {
    const Flow flow({{40, 20}, {50, 20}, {60, 20}});
    QCOMPARE(flow.layout->count(), 3);
    QCOMPARE(flow.layout->takeAt(3), nullptr);
    QCOMPARE(flow.layout->itemAt(-1), nullptr);
    delete flow.layout->takeAt(0);
    QCOMPARE(flow.layout->count(), 2);
    QCOMPARE(flow.layout->itemAt(0)->widget(), flow.boxes.at(1));
    QCOMPARE(flow.layout->arrange(unlimited).size, QSize(122, 20));
}

LUMORA_UI_TEST_MAIN(FlowLayoutTest)
#include "tst_flowlayout.moc"

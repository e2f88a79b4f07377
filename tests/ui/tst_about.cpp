// SPDX-License-Identifier: MIT
#include "Addresses.h"
#include "BrowserDouble.h"
#include "Find.h"
#include "Input.h"
#include "LangManager.h"
#include "PageWindow.h"
#include "Pixels.h"
#include "UiTest.h"
#include "pages/AboutView.h"
#include "style/Theme.h"
#include "widgets/Links.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QScopeGuard>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

const QStringList linkNames{u"link-house"_s, u"link-envelope"_s, u"link-doc.text"_s};

struct AboutWindow final {
    explicit AboutWindow(const QString& picture = {}) {
        window.show(new AboutView(window.manager, picture));
    }

    [[nodiscard]] QWidget& icon() const { return require<>(window.column, u"aboutIcon"_s); }

    [[nodiscard]] LinkRow& link(qsizetype index) const {
        return require<LinkRow>(window.column, linkNames.at(index));
    }

    [[nodiscard]] QColor iconPixel(const QPoint& place) const {
        return icon().grab().toImage().pixelColor(place);
    }

    PageWindow window;
};

QRect inWindow(const QWidget& widget) {
    return {widget.mapTo(widget.window(), QPoint(0, 0)), widget.size()};
}

} // namespace

class AboutTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void showsTheNameAndAFixedVersion();
    void showsTheApplicationsIconWithoutAPicture_data();
    void showsTheApplicationsIconWithoutAPicture();
    void showsTheBundlesPicture();
    void opensItsLinks_data();
    void opensItsLinks();
    void hasTheSizesOfItsLinks();
    void standsInTheMiddle();
    void speaksTheLanguage_data();
    void speaksTheLanguage();
    void runsNothing();

private:
    QTemporaryDir m_folder;
};

void AboutTest::initTestCase() {
    QPixmap icon(256, 256);
    icon.fill(Qt::green);
    QApplication::setWindowIcon(QIcon(icon));
    QPixmap picture(256, 256);
    picture.fill(Qt::red);
    QVERIFY(picture.save(m_folder.filePath(u"Lumora.png"_s)));
    QFile broken(m_folder.filePath(u"broken.png"_s));
    QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write("no picture") > 0);
}

void AboutTest::showsTheNameAndAFixedVersion() {
    QApplication::setApplicationVersion(u"7.8.9"_s);
    const AboutWindow about;
    QCOMPARE(about.window.page().title(), u"About"_s);
    QCOMPARE(require<QLabel>(about.window.column, u"aboutVersion"_s).text(), u"Version 0.1.9"_s);
    QStringList labels;
    for (const QLabel* const label : about.window.column.page()->findChildren<QLabel*>())
        labels.append(label->text());
    QCOMPARE(labels, (QStringList{u"Lumora"_s, u"Version 0.1.9"_s}));
}

void AboutTest::showsTheApplicationsIconWithoutAPicture_data() {
    QTest::addColumn<QString>("picture");
    QTest::newRow("no bundle") << QString();
    QTest::newRow("missing") << m_folder.filePath(u"missing.png"_s);
    QTest::newRow("broken") << m_folder.filePath(u"broken.png"_s);
}

void AboutTest::showsTheApplicationsIconWithoutAPicture() {
    QFETCH(QString, picture);
    const AboutWindow about(picture);
    QCOMPARE(about.icon().size(), QSize(96, 96));
    QCOMPARE(about.iconPixel({48, 48}), QColor(Qt::green));
}

void AboutTest::showsTheBundlesPicture() {
    const AboutWindow about(m_folder.filePath(u"Lumora.png"_s));
    QCOMPARE(about.icon().size(), QSize(120, 120));
    QCOMPARE(about.iconPixel({60, 60}), QColor(Qt::red));
    // Corners of radius 24: 7 points of a diagonal are cut off.
    QVERIFY(about.iconPixel({5, 5}) != QColor(Qt::red));
    QCOMPARE(about.iconPixel({9, 9}), QColor(Qt::red));
    QCOMPARE(about.iconPixel({24, 0}), QColor(Qt::red));
    QVERIFY(about.iconPixel({14, 0}) != QColor(Qt::red));
}

void AboutTest::opensItsLinks_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("address");
    QTest::newRow("home page") << 0 << Addresses::homePage;
    QTest::newRow("contact") << 1 << Addresses::contact;
    QTest::newRow("source") << 2 << Addresses::repository;
}

void AboutTest::opensItsLinks() {
    QFETCH(int, index);
    QFETCH(QString, address);
    const BrowserDouble browser;
    const AboutWindow about;
    Input::click(about.link(index));
    QCOMPARE(browser.opened(), QStringList{address});
    about.link(index).setFocus();
    Input::key(Qt::Key_Space);
    QCOMPARE(browser.opened(), (QStringList{address, address}));
    QCOMPARE(about.window.page().title(), u"About"_s);
}

void AboutTest::hasTheSizesOfItsLinks() {
    const AboutWindow about;
    for (qsizetype i = 0; i < linkNames.size(); ++i) {
        const QRect link = inWindow(about.link(i));
        QCOMPARE(link.width(), 260);
        QVERIFY(link.height() >= about.link(i).fontMetrics().height() + 2 * 8);
        if (i > 0)
            QCOMPARE(link.top(), inWindow(about.link(i - 1)).bottom() + 1 + 8);
    }
    const QRect icon = inWindow(about.icon());
    const QRect version = inWindow(require<QLabel>(about.window.column, u"aboutVersion"_s));
    QCOMPARE(inWindow(about.link(0)).top(), version.bottom() + 1 + 32);
    const QRect name = inWindow(require<QLabel>(about.window.column, u"aboutName"_s));
    QCOMPARE(name.top(), icon.bottom() + 1 + 12);
    QCOMPARE(version.top(), name.bottom() + 1 + 12);
    // On 4 % of the text's colour, with round corners.
    const QImage image = about.link(0).window()->grab(inWindow(about.link(0))).toImage();
    QColor tint = Theme::light().text;
    tint.setAlphaF(0.04F);
    const QColor fill = Pixels::on(Theme::light().content, tint);
    QVERIFY(Pixels::areAlike(image.pixelColor(6, 0), fill));
    QVERIFY(Pixels::areAlike(image.pixelColor(0, 6), fill));
    QVERIFY(!Pixels::areAlike(image.pixelColor(0, 0), fill));
}

void AboutTest::standsInTheMiddle() {
    AboutWindow about;
    for (const QSize size : {QSize(720, 600), QSize(520, 450)}) {
        about.window.column.resize(size);
        QTRY_COMPARE(about.window.column.page()->width(), size.width());
        const QRect page = inWindow(*about.window.column.page());
        const QRect content = inWindow(about.icon()).united(inWindow(about.link(2)));
        QVERIFY(qAbs(content.center().x() - page.center().x()) <= 1);
        QVERIFY(qAbs(content.center().y() - page.center().y()) <= 1);
    }
}

void AboutTest::speaksTheLanguage_data() {
    QTest::addColumn<Lang>("lang");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("ko") << Lang::ko << QStringList{u"홈페이지"_s, u"연락처"_s, u"오픈소스 정보"_s};
    QTest::newRow("en") << Lang::en
                        << QStringList{u"Home Page"_s, u"Contact"_s, u"Open Source Info"_s};
    QTest::newRow("ja") << Lang::ja
                        << QStringList{u"ホームページ"_s, u"お問い合わせ"_s,
                                       u"オープンソース情報"_s};
}

void AboutTest::speaksTheLanguage() {
    QFETCH(Lang, lang);
    QFETCH(QStringList, texts);
    LangManager::shared().setCurrent(lang);
    const auto restore = qScopeGuard([] { LangManager::shared().setCurrent(Lang::en); });
    const AboutWindow about;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        QCOMPARE(about.link(i).text(), texts.at(i));
        QCOMPARE(about.link(i).accessibleName(), texts.at(i));
    }
    QCOMPARE(require<QLabel>(about.window.column, u"aboutVersion"_s).text(), u"Version 0.1.9"_s);
}

void AboutTest::runsNothing() {
    const AboutWindow about;
    QVERIFY(!about.window.page().hasButton(u"refreshButton"_s));
    QVERIFY(!about.window.page().hasSearchField());
    QCOMPARE(about.window.brew.runs(), QStringList());
}

LUMORA_UI_TEST_MAIN(AboutTest)
#include "tst_about.moc"

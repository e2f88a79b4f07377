// SPDX-License-Identifier: MIT
#include "FreshHome.h"
#include "Pixels.h"
#include "style/Look.h"
#include "style/Theme.h"
#include "style/Typography.h"
#include "widgets/RowListView.h"

#include <QApplication>
#include <QFontInfo>
#include <QTest>

using namespace Qt::StringLiterals;

/// What has to be so in another typeface, too, than that of the other tests: this one has more
/// weights than regular and bold.
class TypefaceTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isAnother();
    void keepsTheDistanceOfTags();
};

void TypefaceTest::isAnother() {
    QCOMPARE(QFontInfo(Typography::font(Typography::body)).family(), u"Inter"_s);
    QVERIFY(Typography::width(Typography::font(40, QFont::Medium), u"certificates"_s) !=
            Typography::width(Typography::font(40), u"certificates"_s));
}

void TypefaceTest::keepsTheDistanceOfTags() {
    const Theme& theme = Theme::light();
    const auto distance = [&theme](const QString& name) {
        const Row row{.id = u"a"_s,
                      .title = name,
                      .subtitle = u"-"_s,
                      .tags = {{u"outdated"_s, RowTag::Tone::Outdated}}};
        RowListView view(48, RowListView::Selectable::Yes);
        view.setRows({{.count = 1, .describe = [row](int) { return row; }}});
        view.resize(500, 60);
        view.show();
        const QImage image = view.viewport()->grab().toImage();
        const int tag =
            Pixels::boundsOf(image, Pixels::on(theme.content, theme.outdatedTag)).left();
        const QImage title = image.copy(0, 0, tag - 2, image.height() / 2 - 6);
        return tag - Pixels::boundsOf(title, theme.text, 120).right();
    };
    for (const QString& name : {u"ca-certificates"_s, u"imagemagick"_s, u"llvm"_s})
        QVERIFY2(qAbs(distance(name) - distance(u"bat"_s)) <= 2, qPrintable(name));
}

int main(int argc, char* argv[]) {
    const FreshHome home;
    home.write(u"fonts.conf"_s, R"(<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig>
  <dir>/usr/share/fonts</dir>
  <cachedir>/var/cache/fontconfig</cachedir>
  <cachedir prefix="xdg">fontconfig</cachedir>
  <selectfont>
    <rejectfont><glob>/usr/share/fonts/*.*</glob></rejectfont>
    <acceptfont><glob>/usr/share/fonts/*/Inter-*.otf</glob></acceptfont>
  </selectfont>
</fontconfig>
)");
    qputenv("FONTCONFIG_FILE", home.path().toUtf8() + "/fonts.conf");
    const QApplication application(argc, argv);
    Look::setUp();
    Look::setDark(false);
    TypefaceTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_typeface.moc"

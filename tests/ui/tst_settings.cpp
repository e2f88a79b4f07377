// SPDX-License-Identifier: MIT
#include "AlertDriver.h"
#include "Find.h"
#include "Input.h"
#include "LangManager.h"
#include "PageWindow.h"
#include "UiTest.h"
#include "pages/SettingsView.h"
#include "widgets/OutputText.h"
#include "widgets/SegmentedPicker.h"
#include "widgets/Spinner.h"
#include "widgets/SymbolLabel.h"

#include <QFontInfo>
#include <QLabel>
#include <QScopeGuard>
#include <QScrollArea>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {

const QString preview = u"previewButton"_s;
const QString cleanup = u"cleanupButton"_s;
const QString doctor = u"doctorButton"_s;

struct SettingsWindow final {
    SettingsWindow() { show(); }

    void show() { window.show(new SettingsView(LangManager::shared(), window.manager)); }

    /// What stands below the cleanup or the doctor section; empty if nothing is shown.
    [[nodiscard]] QString output(const QString& section) const {
        const auto* const found = findVisible<OutputSection>(window.column, section);
        return found != nullptr ? found->text()->output() : QString();
    }

    [[nodiscard]] QString cleanupOutput() const { return output(u"cleanupOutput"_s); }

    [[nodiscard]] QString doctorOutput() const { return output(u"doctorOutput"_s); }

    [[nodiscard]] qsizetype spinners() const {
        qsizetype count = 0;
        for (const Spinner* const spinner : window.column.findChildren<Spinner*>())
            count += spinner->isVisible() ? 1 : 0;
        return count;
    }

    [[nodiscard]] QStringList labels() const {
        QStringList texts;
        for (const QLabel* const label : window.column.findChildren<QLabel*>()) {
            if (label->isVisible())
                texts.append(label->text());
        }
        return texts;
    }

    [[nodiscard]] bool isEnabled(const QString& button) const {
        return window.page().button(button).isEnabled();
    }

    void press(const QString& button) const { window.page().press(button); }

    PageWindow window;
    ScriptedBrew& brew{window.brew};
};

} // namespace

class SettingsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void cleanupTestCase() { LangManager::shared().setCurrent(Lang::en); }

    void hasThreeSections();
    void namesItsControlsInEveryLanguage_data();
    void namesItsControlsInEveryLanguage();
    void offersTheLanguagesInTheirOwnNames();
    void followsALanguageThatWasChosenElsewhere();
    void previewsTheCleanup_data();
    void previewsTheCleanup();
    void saysThatThereIsNothingInTheLanguageOfTheUser();
    void previewsOnceAtATime();
    void asksBeforeItCleansUp();
    void cleansUpNothingWhenCancelled();
    void cleansUp_data();
    void cleansUp();
    void previewsWhileItCleansUp();
    void letsTheLaterOfBothWin();
    void runsTheDoctor_data();
    void runsTheDoctor();
    void runsTheDoctorBesideTheRest();
    void forgetsItsOutputsWhenItIsShownAnew();
    void scrollsALongOutput();
    void touchesNothingOfTheManagers();
};

void SettingsTest::hasThreeSections() {
    const SettingsWindow settings;
    QCOMPARE(settings.window.page().title(), u"Settings"_s);
    for (const QString& text :
         {u"Language"_s, u"Cleanup"_s,
          u"Remove old versions, cache files, and unused dependencies."_s, u"Doctor"_s,
          u"Check your Homebrew installation for potential problems."_s})
        QVERIFY2(settings.labels().contains(text), qPrintable(text));
    QStringList symbols;
    for (const SymbolLabel* const label : settings.window.column.findChildren<SymbolLabel*>()) {
        if (label->isVisible())
            symbols.append(label->symbol());
    }
    QCOMPARE(symbols, (QStringList{u"globe"_s, u"paintbrush"_s, u"stethoscope"_s}));
    QCOMPARE(settings.spinners(), 0);
    QCOMPARE(settings.cleanupOutput(), QString());
    QCOMPARE(settings.doctorOutput(), QString());
    QVERIFY(settings.isEnabled(preview) && settings.isEnabled(cleanup) &&
            settings.isEnabled(doctor));
    QCOMPARE(settings.brew.runs(), QStringList());
}

void SettingsTest::namesItsControlsInEveryLanguage_data() {
    QTest::addColumn<Lang>("lang");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("ko") << Lang::ko << QStringList{u"미리보기"_s, u"정리 실행"_s, u"진단 실행"_s,
                                                   u"언어"_s,     u"정리"_s,      u"진단"_s};
    QTest::newRow("en") << Lang::en << QStringList{u"Preview"_s,  u"Run Cleanup"_s, u"Run Doctor"_s,
                                                   u"Language"_s, u"Cleanup"_s,     u"Doctor"_s};
    QTest::newRow("ja") << Lang::ja
                        << QStringList{u"プレビュー"_s, u"クリーンアップ実行"_s, u"Doctor実行"_s,
                                       u"言語"_s,       u"クリーンアップ"_s,     u"Doctor"_s};
}

void SettingsTest::namesItsControlsInEveryLanguage() {
    QFETCH(Lang, lang);
    QFETCH(QStringList, texts);
    LangManager::shared().setCurrent(lang);
    const auto restore = qScopeGuard([] { LangManager::shared().setCurrent(Lang::en); });
    const SettingsWindow settings;
    QCOMPARE(settings.window.page().button(preview).text(), texts.at(0));
    QCOMPARE(settings.window.page().button(cleanup).text(), texts.at(1));
    QCOMPARE(settings.window.page().button(doctor).text(), texts.at(2));
    for (const QString& button : {preview, cleanup, doctor})
        QVERIFY(!settings.window.page().button(button).icon().isNull());
    for (const QString& text : texts.sliced(3))
        QVERIFY2(settings.labels().contains(text), qPrintable(text));
    // No hint to start anew: the change is complete.
    QVERIFY(!settings.labels().contains(u"Restart app to apply language change."_s));
}

void SettingsTest::offersTheLanguagesInTheirOwnNames() {
    const SettingsWindow settings;
    const auto& picker = require<SegmentedPicker>(settings.window.column);
    QStringList names;
    for (int i = 0; i < 3; ++i)
        names.append(picker.segment(i)->text());
    QCOMPARE(names, (QStringList{u"한국어"_s, u"English"_s, u"日本語"_s}));
    QCOMPARE(picker.segment(3), nullptr);
    QCOMPARE(picker.current(), static_cast<int>(Lang::en));
    QCOMPARE(picker.accessibleName(), u"Language"_s);
    Input::click(*picker.segment(2));
    QTRY_COMPARE(*LangManager::shared().current(), Lang::ja);
    QTRY_COMPARE(picker.current(), static_cast<int>(Lang::ja));
    LangManager::shared().setCurrent(Lang::en);
}

void SettingsTest::followsALanguageThatWasChosenElsewhere() {
    const SettingsWindow settings;
    LangManager::shared().setCurrent(Lang::ko);
    const auto restore = qScopeGuard([] { LangManager::shared().setCurrent(Lang::en); });
    QTRY_COMPARE(require<SegmentedPicker>(settings.window.column).current(),
                 static_cast<int>(Lang::ko));
}

void SettingsTest::previewsTheCleanup_data() {
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QByteArray>("error");
    QTest::addColumn<QString>("shown");
    const QString nothing = u"Nothing to clean up."_s;
    QTest::newRow("something") << QByteArray("Would remove: a\nb\n") << QByteArray()
                               << u"Would remove: a\nb\n"_s;
    QTest::newRow("nothing") << QByteArray() << QByteArray() << nothing;
    QTest::newRow("blank lines") << QByteArray("\n \t\n\n") << QByteArray() << nothing;
    QTest::newRow("warnings alone")
        << QByteArray() << QByteArray("Warning: x\n") << u"Warning: x\n"_s;
    QTest::newRow("both") << QByteArray("a\n") << QByteArray("Warning: x\n") << u"a\n"_s;
}

void SettingsTest::previewsTheCleanup() {
    QFETCH(QByteArray, output);
    QFETCH(QByteArray, error);
    QFETCH(QString, shown);
    SettingsWindow settings;
    settings.brew.answer(u"cleanup -n"_s, output, 0, error);
    settings.press(preview);
    QTRY_COMPARE(settings.cleanupOutput(), shown);
    QVERIFY(settings.labels().contains(u"Output"_s));
    QVERIFY(settings.isEnabled(preview));
    QCOMPARE(settings.spinners(), 0);
    const auto& section = require<OutputSection>(settings.window.column, u"cleanupOutput"_s);
    QVERIFY(QFontInfo(section.text()->font()).fixedPitch());
    QVERIFY(section.text()->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    QCOMPARE(settings.brew.runs(), QStringList{u"cleanup -n"_s});
}

void SettingsTest::saysThatThereIsNothingInTheLanguageOfTheUser() {
    LangManager::shared().setCurrent(Lang::ja);
    const auto restore = qScopeGuard([] { LangManager::shared().setCurrent(Lang::en); });
    const SettingsWindow settings;
    settings.press(preview);
    QTRY_COMPARE(settings.cleanupOutput(), u"クリーンアップする項目はありません。"_s);
    // The real cleanup's own words are English in every language.
    settings.press(cleanup);
    AlertDriver().press(u"クリーンアップ実行"_s);
    QTRY_COMPARE(settings.cleanupOutput(), u"Nothing to clean up."_s);
}

void SettingsTest::previewsOnceAtATime() {
    SettingsWindow settings;
    settings.brew.answer(u"cleanup -n"_s, "first\n");
    settings.brew.hold(u"cleanup -n"_s);
    settings.press(preview);
    QTRY_VERIFY(!settings.isEnabled(preview));
    QVERIFY(settings.isEnabled(cleanup) && settings.isEnabled(doctor));
    QCOMPARE(settings.spinners(), 1);
    settings.press(preview);
    settings.brew.release(u"cleanup -n"_s);
    QTRY_COMPARE(settings.cleanupOutput(), u"first\n"_s);
    QTRY_COMPARE(settings.spinners(), 0);
    QCOMPARE(settings.brew.runs(), QStringList{u"cleanup -n"_s});
}

void SettingsTest::asksBeforeItCleansUp() {
    const SettingsWindow settings;
    settings.press(cleanup);
    const AlertDriver alert;
    QCOMPARE(alert.title(), u"Run Cleanup"_s);
    QCOMPARE(alert.message(), u"This will remove old versions and cache files. Continue?"_s);
    QStringList buttons = alert.buttons();
    buttons.sort();
    QCOMPARE(buttons, (QStringList{u"Cancel"_s, u"Run Cleanup"_s}));
    QCOMPARE(alert.defaultButton(), u"Cancel"_s);
    QVERIFY(settings.isEnabled(cleanup));
    QCOMPARE(settings.brew.runs(), QStringList());
}

void SettingsTest::cleansUpNothingWhenCancelled() {
    SettingsWindow settings;
    settings.brew.answer(u"cleanup -n"_s, "first\n");
    settings.press(preview);
    QTRY_COMPARE(settings.cleanupOutput(), u"first\n"_s);
    for (int i = 0; i < 2; ++i) {
        settings.press(cleanup);
        if (i == 0)
            AlertDriver().press(u"Cancel"_s);
        else
            AlertDriver().escape();
        QVERIFY(settings.isEnabled(cleanup));
        QCOMPARE(settings.cleanupOutput(), u"first\n"_s);
        QCOMPARE(settings.spinners(), 0);
    }
    settings.press(doctor);
    QTRY_COMPARE(settings.brew.runs(), (QStringList{u"cleanup -n"_s, u"doctor"_s}));
}

void SettingsTest::cleansUp_data() {
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QString>("shown");
    QTest::newRow("something") << QByteArray("Removed a\n") << u"Removed a\n"_s;
    // As it came, even where the preview would say that there is nothing.
    QTest::newRow("blank lines") << QByteArray("\n\n") << u"\n\n"_s;
    QTest::newRow("nothing") << QByteArray() << u"Nothing to clean up."_s;
}

void SettingsTest::cleansUp() {
    QFETCH(QByteArray, output);
    QFETCH(QString, shown);
    SettingsWindow settings;
    settings.brew.answer(u"cleanup"_s, output);
    settings.brew.hold(u"cleanup"_s);
    settings.press(cleanup);
    AlertDriver().press(u"Run Cleanup"_s);
    QTRY_VERIFY(!settings.isEnabled(cleanup));
    QVERIFY(settings.isEnabled(preview));
    QCOMPARE(settings.spinners(), 1);
    settings.brew.release(u"cleanup"_s);
    QTRY_VERIFY(settings.isEnabled(cleanup));
    QCOMPARE(settings.cleanupOutput(), shown);
    QCOMPARE(settings.spinners(), 0);
    QCOMPARE(settings.brew.runs(), QStringList{u"cleanup"_s});
}

void SettingsTest::previewsWhileItCleansUp() {
    SettingsWindow settings;
    settings.brew.answer(u"cleanup -n"_s, "preview");
    settings.brew.hold(u"cleanup"_s);
    settings.press(cleanup);
    AlertDriver().press(u"Run Cleanup"_s);
    QTRY_VERIFY(!settings.isEnabled(cleanup));
    settings.press(preview);
    QTRY_COMPARE(settings.cleanupOutput(), u"preview"_s);
    QVERIFY(settings.isEnabled(preview) && !settings.isEnabled(cleanup));
    // One spinner for both; it stays until the second is through as well.
    QCOMPARE(settings.spinners(), 1);
    settings.brew.release(u"cleanup"_s);
    QTRY_COMPARE(settings.spinners(), 0);
}

void SettingsTest::letsTheLaterOfBothWin() {
    SettingsWindow settings;
    settings.brew.answer(u"cleanup -n"_s, "preview");
    settings.brew.answer(u"cleanup"_s, "cleanup");
    settings.brew.hold(u"cleanup -n"_s);
    settings.press(preview);
    settings.press(cleanup);
    AlertDriver().press(u"Run Cleanup"_s);
    QTRY_COMPARE(settings.cleanupOutput(), u"cleanup"_s);
    settings.brew.release(u"cleanup -n"_s);
    QTRY_COMPARE(settings.cleanupOutput(), u"preview"_s);
}

void SettingsTest::runsTheDoctor_data() {
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QByteArray>("error");
    QTest::addColumn<QString>("shown");
    QTest::newRow("well") << QByteArray("All is well.\n") << QByteArray() << u"All is well.\n"_s;
    QTest::newRow("warnings") << QByteArray() << QByteArray("Warning: a\n") << u"\nWarning: a\n"_s;
    QTest::newRow("both") << QByteArray("Look:\n") << QByteArray("Warning: a\n")
                          << u"Look:\n\nWarning: a\n"_s;
    QTest::newRow("nothing") << QByteArray() << QByteArray() << QString();
}

void SettingsTest::runsTheDoctor() {
    QFETCH(QByteArray, output);
    QFETCH(QByteArray, error);
    QFETCH(QString, shown);
    SettingsWindow settings;
    settings.brew.answer(u"doctor"_s, output, 1, error);
    settings.brew.hold(u"doctor"_s);
    settings.press(doctor);
    QTRY_VERIFY(!settings.isEnabled(doctor));
    QCOMPARE(settings.spinners(), 1);
    settings.press(doctor);
    settings.brew.release(u"doctor"_s);
    QTRY_VERIFY(settings.isEnabled(doctor));
    QCOMPARE(settings.doctorOutput(), shown);
    QCOMPARE(settings.labels().contains(u"Diagnosis"_s), !shown.isEmpty());
    QCOMPARE(settings.spinners(), 0);
    QCOMPARE(settings.brew.runs(), QStringList{u"doctor"_s});
}

void SettingsTest::runsTheDoctorBesideTheRest() {
    SettingsWindow settings;
    settings.brew.hold(u"doctor"_s);
    settings.brew.hold(u"cleanup -n"_s);
    settings.press(doctor);
    settings.press(preview);
    QTRY_COMPARE(settings.spinners(), 2);
    QVERIFY(settings.isEnabled(cleanup));
    settings.brew.release(u"cleanup -n"_s);
    QTRY_COMPARE(settings.spinners(), 1);
    QVERIFY(!settings.isEnabled(doctor));
    settings.brew.release(u"doctor"_s);
    QTRY_VERIFY(settings.isEnabled(doctor));
}

void SettingsTest::forgetsItsOutputsWhenItIsShownAnew() {
    SettingsWindow settings;
    settings.brew.answer(u"cleanup -n"_s, "preview");
    settings.brew.answer(u"doctor"_s, "doctor");
    settings.press(preview);
    settings.press(doctor);
    QTRY_COMPARE(settings.cleanupOutput(), u"preview"_s);
    QTRY_COMPARE(settings.doctorOutput(), u"doctor"_s);
    settings.show();
    QCOMPARE(settings.cleanupOutput(), QString());
    QCOMPARE(settings.doctorOutput(), QString());
}

void SettingsTest::scrollsALongOutput() {
    SettingsWindow settings;
    settings.brew.answer(u"cleanup -n"_s, QByteArray("Would remove: something\n").repeated(200));
    settings.press(preview);
    QTRY_VERIFY(!settings.cleanupOutput().isEmpty());
    const auto& scroll = require<QScrollArea>(settings.window.column);
    QTRY_VERIFY(scroll.verticalScrollBar()->maximum() > 0);
    QCOMPARE(scroll.horizontalScrollBar()->maximum(), 0);
    // The output itself is as tall as its lines: there is one bar, not two.
    const auto& text = *require<OutputSection>(settings.window.column, u"cleanupOutput"_s).text();
    QCOMPARE(text.verticalScrollBar()->maximum(), 0);
    QVERIFY(text.height() >= 200 * text.fontMetrics().height());
}

void SettingsTest::touchesNothingOfTheManagers() {
    const SettingsWindow settings;
    const BrewManager& manager = settings.window.manager;
    settings.press(preview);
    QTRY_VERIFY(!settings.cleanupOutput().isEmpty());
    settings.press(cleanup);
    AlertDriver().press(u"Run Cleanup"_s);
    settings.press(doctor);
    QTRY_COMPARE(settings.brew.runs().size(), 3);
    QTRY_VERIFY(settings.isEnabled(cleanup) && settings.isEnabled(doctor));
    QVERIFY(!*manager.isRunningOperation);
    QCOMPARE(*manager.operationOutput, QString());
    QCOMPARE(*manager.errorMessage, std::nullopt);
}

LUMORA_UI_TEST_MAIN(SettingsTest)
#include "tst_settings.moc"

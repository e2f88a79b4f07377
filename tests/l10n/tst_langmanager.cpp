// SPDX-License-Identifier: MIT
#include "FreshHome.h"
#include "LangManager.h"
#include "SecondProcess.h"
#include "Shortage.h"
#include "Traces.h"

#include <QSettings>

#include <algorithm>
#include <array>
#include <barrier>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

const QString preferencesFile = u".config/Lumora/Lumora.conf"_s;

} // namespace

class LangManagerTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void listsTheLanguages();
    void takesNoOtherCode_data();
    void takesNoOtherCode();
    void choosesTheLanguageToStartIn_data();
    void choosesTheLanguageToStartIn();
    void startsInTheSystemsLanguage_data();
    void startsInTheSystemsLanguage();
    void startsInTheStoredLanguage_data();
    void startsInTheStoredLanguage();
    void survivesUnreadablePreferences();
    void changesWhereNothingCanBeStored_data();
    void changesWhereNothingCanBeStored();
    void startsInTheLanguageSetBefore();
    void announcesThenChangesThenStores();
    void storesTheLanguageItEndsUpWith();
    void isMadeOnce();

private:
    [[nodiscard]] QString preferences() const { return m_home.path() + u'/' + preferencesFile; }

    FreshHome m_home;
};

namespace {

void useTheApplicationsPreferences() {
    QCoreApplication::setOrganizationName(u"Lumora"_s);
    QCoreApplication::setApplicationName(u"Lumora"_s);
}

/// A launch: prints the language it starts in, sets another one if told which.
int launch(const QStringList& arguments) {
    useTheApplicationsPreferences();
    LangManager& languages = LangManager::shared();
    std::fputs(qPrintable(rawValue(*languages.current())), stdout);
    if (const auto chosen = langFromRawValue(arguments.value(0)))
        languages.setCurrent(*chosen);
    // Not even the destructors of a proper end are needed to keep a choice.
    std::fflush(stdout);
    std::_Exit(0);
}

/// Sets each language, and prints what is in force then and whether anything has been left behind.
int switchThroughAll(const QStringList&) {
    useTheApplicationsPreferences();
    LangManager& languages = LangManager::shared();
    const QByteArray before = traces();
    for (const Lang lang : {Lang::ja, Lang::en, Lang::ko, Lang::ko, Lang::ja}) {
        languages.setCurrent(lang);
        std::printf("%s ", qPrintable(rawValue(*languages.current())));
    }
    std::fputs(traces() == before ? "nothing left" : "something left", stdout);
    return EXIT_SUCCESS;
}

/// Makes the one instance from eight threads at once.
int makeFromManyThreads(const QStringList&) {
    useTheApplicationsPreferences();
    constexpr int count = 8;
    std::barrier together(count);
    std::array<LangManager*, count> seen{};
    std::vector<std::thread> threads;
    for (LangManager*& instance : seen) {
        threads.emplace_back([&] {
            together.arrive_and_wait();
            instance = &LangManager::shared();
        });
    }
    std::ranges::for_each(threads, &std::thread::join);
    return seen[0] != nullptr && std::ranges::count(seen, seen[0]) == count ? 0 : 1;
}

QString languageOfALaunch(const QStringList& arguments = {},
                          const QString& systemLanguages = u"fr_FR"_s,
                          const QString& systemLocale = u"C.UTF-8"_s) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LANGUAGE"_s, systemLanguages);
    environment.insert(u"LC_ALL"_s, systemLocale);
    const SecondProcess process(u"launch"_s, arguments, environment);
    return process.status() == 0 ? QString::fromUtf8(process.output()) : u"failed"_s;
}

const QByteArray switchedThroughAll = "ja en ko ko ja nothing left";

QString stored() {
    return QSettings().value("appLanguage").toString();
}

/// What is the matter with the folder of the preferences, for as long as the result lives.
using Spoil = std::function<std::shared_ptr<void>(const QString& folder)>;

const QByteArray storedBefore = "[General]\nappLanguage=ko\nother=1\n";

/// None where nobody may have one.
std::shared_ptr<void> fullDisk(const QString& folder, int blocksLeft) {
    constexpr qint64 size = 64 * 1024;
    const auto disk = std::make_shared<TightSpace>(folder, size);
    if (!disk->isDisk())
        return nullptr;
    QFile file(folder + u"/Lumora.conf"_s);
    if (!file.open(QIODevice::WriteOnly) || file.write(storedBefore) != storedBefore.size())
        qFatal("The preferences could not be written");
    file.close();
    disk->leaveBlocks(blocksLeft);
    return disk;
}

const std::map<QByteArray, Spoil>& placesThatTakeNothing() {
    static const std::map<QByteArray, Spoil> places{
        {"a full disk", [](const QString& folder) { return fullDisk(folder, 0); }},
        {"a disk with room for a lock only",
         [](const QString& folder) { return fullDisk(folder, 1); }},
        {"a read-only folder",
         [](const QString& folder) { return std::make_shared<ReadOnlyFolder>(folder); }},
    };
    return places;
}

/// What is in a folder, with its content.
std::map<QString, QByteArray> filesIn(const QString& folder) {
    std::map<QString, QByteArray> files;
    for (const QString& name : QDir(folder).entryList(QDir::Files | QDir::Hidden)) {
        QFile file(folder + u'/' + name);
        files[name] = file.open(QIODevice::ReadOnly) ? file.readAll() : "unreadable";
    }
    return files;
}

} // namespace

void LangManagerTest::init() {
    QVERIFY(QDir(m_home.path() + u"/.config"_s).removeRecursively());
}

void LangManagerTest::listsTheLanguages() {
    QStringList codes;
    QStringList names;
    for (const Lang lang : allLangs) {
        codes.append(rawValue(lang));
        names.append(displayName(lang));
        QCOMPARE(langFromRawValue(rawValue(lang)), std::optional(lang));
        QCOMPARE(static_cast<qsizetype>(lang), codes.size() - 1);
    }
    QCOMPARE(codes, (QStringList{u"ko"_s, u"en"_s, u"ja"_s}));
    QCOMPARE(names, (QStringList{u"한국어"_s, u"English"_s, u"日本語"_s}));
}

void LangManagerTest::takesNoOtherCode_data() {
    QTest::addColumn<QString>("code");
    for (const char* const code : {"KO", "EN", "Ja", "en-US", "ko_KR", "", " ja", "ja ", "j", "fr"})
        QTest::addRow("\"%s\"", code) << QString::fromLatin1(code);
}

void LangManagerTest::takesNoOtherCode() {
    QFETCH(QString, code);
    QCOMPARE(langFromRawValue(code), std::nullopt);
}

void LangManagerTest::choosesTheLanguageToStartIn_data() {
    QTest::addColumn<QString>("storedCode");
    QTest::addColumn<QStringList>("systemLanguages");
    QTest::addColumn<Lang>("lang");
    const auto row = [](const QString& code, const QStringList& system, Lang lang) {
        QTest::addRow("stored \"%s\", system %s", qPrintable(code), qPrintable(system.join(u' ')))
            << code << system << lang;
    };
    row(u"ja"_s, {u"ko-KR"_s}, Lang::ja);
    row(u"ko"_s, {u"ja"_s}, Lang::ko);
    row(u"en"_s, {u"ja"_s}, Lang::en);
    row(u"en"_s, {}, Lang::en);

    row({}, {u"ko-KR"_s}, Lang::ko);
    row({}, {u"ko"_s}, Lang::ko);
    row({}, {u"ja"_s}, Lang::ja);
    row({}, {u"ja-JP"_s, u"ko-KR"_s}, Lang::ja);
    row({}, {u"fr-FR"_s}, Lang::en);
    row({}, {u"zh-Hans"_s}, Lang::en);
    row({}, {u"en-GB"_s}, Lang::en);
    row({}, {u"C"_s}, Lang::en);
    row({}, {}, Lang::en);
    // Only the first counts, by its first letters, and case matters.
    row({}, {u"fr-FR"_s, u"ko-KR"_s}, Lang::en);
    row({}, {u""_s, u"ko-KR"_s}, Lang::en);
    row({}, {u"kok-IN"_s}, Lang::ko);
    row({}, {u"jam"_s}, Lang::ja);
    row({}, {u"KO-KR"_s}, Lang::en);
    row({}, {u"x-ja"_s}, Lang::en);

    row(u"EN"_s, {u"ko-KR"_s}, Lang::ko);
    row(u"en-US"_s, {u"ja-JP"_s}, Lang::ja);
    row(u"JA"_s, {u"fr-FR"_s}, Lang::en);
    row(u" ja"_s, {}, Lang::en);
}

void LangManagerTest::choosesTheLanguageToStartIn() {
    QFETCH(QString, storedCode);
    QFETCH(QStringList, systemLanguages);
    QFETCH(Lang, lang);
    QCOMPARE(LangManager::initialLanguage(storedCode, systemLanguages), lang);
}

void LangManagerTest::startsInTheSystemsLanguage_data() {
    QTest::addColumn<QString>("languages");
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("code");
    QTest::newRow("Korean") << u"ko_KR"_s << u"C.UTF-8"_s << u"ko"_s;
    QTest::newRow("Japanese, then English") << u"ja:en"_s << u"en_US.UTF-8"_s << u"ja"_s;
    QTest::newRow("French, then Korean") << u"fr:ko"_s << u"fr_FR.UTF-8"_s << u"en"_s;
    QTest::newRow("Korean locale") << u""_s << u"ko_KR.UTF-8"_s << u"ko"_s;
    QTest::newRow("Japanese locale") << u""_s << u"ja_JP.UTF-8"_s << u"ja"_s;
    QTest::newRow("no locale") << u""_s << u"C.UTF-8"_s << u"en"_s;
}

void LangManagerTest::startsInTheSystemsLanguage() {
    QFETCH(QString, languages);
    QFETCH(QString, locale);
    QFETCH(QString, code);
    QCOMPARE(languageOfALaunch({}, languages, locale), code);
    // That is no choice of the user's, so that the next launch asks the system again.
    QVERIFY(!QFile::exists(preferences()));
}

void LangManagerTest::startsInTheStoredLanguage_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("code");
    const auto row = [](const char* name, const QByteArray& content, const QString& code) {
        QTest::newRow(name) << content << code;
    };
    row("Japanese", "[General]\nappLanguage=ja\n", u"ja"_s);
    row("English", "[General]\nappLanguage=en\n", u"en"_s);
    row("beside other preferences", "[General]\nother=1\nappLanguage=ja\n[window]\nx=2\n", u"ja"_s);
    // The system speaks Korean.
    row("none", "[General]\nother=1\n", u"ko"_s);
    row("in capitals", "[General]\nappLanguage=EN\n", u"ko"_s);
    row("a region", "[General]\nappLanguage=en-US\n", u"ko"_s);
    row("empty", "[General]\nappLanguage=\n", u"ko"_s);
    row("a list", "[General]\nappLanguage=ja, en\n", u"ko"_s);
    row("no text", "[General]\nappLanguage=@Variant(\\0\\0)\n", u"ko"_s);
    row("another group", "[window]\nappLanguage=ja\n", u"ko"_s);
    row("another key", "[General]\napplanguage=ja\nappLanguages=ja\n", u"ko"_s);
    row("an empty file", "", u"ko"_s);
    row("not a preference file", QByteArray("\0\xFF[[[\n==\nappLanguage", 19), u"ko"_s);
    row("a megabyte of nothing", QByteArray(1'000'000, '\0'), u"ko"_s);
}

void LangManagerTest::startsInTheStoredLanguage() {
    QFETCH(QByteArray, content);
    QFETCH(QString, code);
    m_home.write(preferencesFile, content);
    QCOMPARE(languageOfALaunch({}, u"ko_KR"_s), code);
    // A bad value stays until the user picks a language.
    QFile file(preferences());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), content);
}

void LangManagerTest::survivesUnreadablePreferences() {
    // A folder in their place is as good as a missing permission, which root would not miss.
    QVERIFY(QDir().mkpath(preferences()));
    QCOMPARE(languageOfALaunch({u"ja"_s}, u"ko_KR"_s), u"ko"_s);
    QCOMPARE(SecondProcess(u"switch"_s).output(), switchedThroughAll);
    QVERIFY(QFileInfo(preferences()).isDir());
}

void LangManagerTest::changesWhereNothingCanBeStored_data() {
    QTest::addColumn<QByteArray>("place");
    for (const auto& [place, spoil] : placesThatTakeNothing())
        QTest::newRow(place.constData()) << place;
}

void LangManagerTest::changesWhereNothingCanBeStored() {
    QFETCH(const QByteArray, place);
    m_home.write(preferencesFile, storedBefore);
    const QString folder = QFileInfo(preferences()).path();
    {
        const std::shared_ptr<void> spoiled = placesThatTakeNothing().at(place)(folder);
        if (!spoiled)
            QSKIP("Only who may mount can have a disk that is full.");
        const auto before = filesIn(folder);
        QCOMPARE(before.at(u"Lumora.conf"_s), storedBefore);
        QCOMPARE(SecondProcess(u"switch"_s).output(), switchedThroughAll);
        QVERIFY(filesIn(folder) == before);
        QCOMPARE(languageOfALaunch({}, u"ja_JP"_s), u"ko"_s);
    }
    QCOMPARE(languageOfALaunch({u"en"_s}, u"ja_JP"_s), u"ko"_s);
    QCOMPARE(filesIn(folder).at(u"Lumora.conf"_s), QByteArray(storedBefore).replace("=ko", "=en"));
}

void LangManagerTest::startsInTheLanguageSetBefore() {
    QCOMPARE(languageOfALaunch({u"ja"_s}, u"ko_KR"_s), u"ko"_s);
    QCOMPARE(languageOfALaunch({u"en"_s}, u"ko_KR"_s), u"ja"_s);
    QCOMPARE(languageOfALaunch({}, u"ko_KR"_s), u"en"_s);
    // The one in force already is a choice as well.
    QCOMPARE(languageOfALaunch({u"en"_s}, u"ko_KR"_s), u"en"_s);
    QFile file(preferences());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("[General]\nappLanguage=en\n"));
}

void LangManagerTest::announcesThenChangesThenStores() {
    LangManager& languages = LangManager::shared();
    languages.setCurrent(Lang::ko);
    QStringList events;
    const auto note = [&](const QString& event) {
        events.append(event + u' ' + rawValue(*languages.current()) + u" stored "_s + stored());
    };
    const QObject listening;
    connect(&languages, &LangManager::objectWillChange, &listening,
            [&] { note(u"will change"_s); });
    languages.current().subscribe(
        &listening, [&](Lang lang) { note(u"changed to "_s + rawValue(lang) + u':'); });

    languages.setCurrent(Lang::ja);
    note(u"done:"_s);
    languages.setCurrent(Lang::ja);

    QCOMPARE(events, (QStringList{u"will change ko stored ko"_s, u"changed to ja: ja stored ko"_s,
                                  u"done: ja stored ja"_s, u"will change ja stored ja"_s,
                                  u"changed to ja: ja stored ja"_s}));
}

void LangManagerTest::storesTheLanguageItEndsUpWith() {
    LangManager& languages = LangManager::shared();
    languages.setCurrent(Lang::ko);
    const QObject listening;
    languages.current().subscribe(&listening, [&](Lang lang) {
        if (lang == Lang::ja)
            languages.setCurrent(Lang::en);
    });
    languages.setCurrent(Lang::ja);
    QCOMPARE(*languages.current(), Lang::en);
    QCOMPARE(stored(), u"en"_s);
}

void LangManagerTest::isMadeOnce() {
    QCOMPARE(SecondProcess(u"many-threads"_s).status(), 0);
}

int main(int argc, char* argv[]) {
    return SecondProcess::main<LangManagerTest>(argc, argv,
                                                {{u"launch"_s, launch},
                                                 {u"many-threads"_s, makeFromManyThreads},
                                                 {u"switch"_s, switchThroughAll}});
}

#include "tst_langmanager.moc"

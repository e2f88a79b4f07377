// SPDX-License-Identifier: MIT
//
// Any bytes as the property list and as the manifest of a bundle that has been unpacked.
#include "ApplicationBundle.h"
#include "Replacement.h"
#include "Require.h"

#include <QDir>
#include <QTemporaryDir>
#include <QXmlStreamWriter>

#include <algorithm>
#include <filesystem>
#include <sstream>

using namespace Qt::StringLiterals;

namespace {

/// A bundle in memory, if there is a file system in it, with two files that a manifest can list.
class Bundle final {
public:
    Bundle() : m_folder(QFile::exists(u"/dev/shm"_s) ? u"/dev/shm/XXXXXX"_s : QString()) {
        QDir folder(path());
        folder.mkpath(u"Contents/Resources"_s);
        folder.mkpath(QFileInfo(ApplicationBundle::executableIn(path())).path());
        write(QDir(path()).relativeFilePath(ApplicationBundle::executableIn(path())), "run");
        write(u"Contents/a b"_s, "1234567890");
    }

    [[nodiscard]] QString path() const { return m_folder.filePath(u"Lumora.app"_s); }

    void write(const QString& name, const QByteArray& content) const {
        QFile file(path() + u'/' + name);
        require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
                "a file can be written");
    }

private:
    QTemporaryDir m_folder;
};

/// The manifest's rule, written another way: a count, and so many lines of a size and a path.
bool isManifestOf(const QString& bundle, const std::string& manifest) {
    std::istringstream lines(manifest);
    std::string line;
    std::getline(lines, line);
    bool isNumber = false;
    const qlonglong count = QByteArray::fromStdString(line).trimmed().toLongLong(&isNumber);
    qlonglong listed = 0;
    for (; std::getline(lines, line); ++listed) {
        // The last character is the line's end, whatever it is.
        if (lines.eof())
            line.pop_back();
        const auto blank = std::min(line.find(' '), line.size());
        const std::string name = line.substr(std::min(blank + 1, line.size()));
        std::error_code error;
        const auto path = bundle.toStdString() + '/' + QString::fromStdString(name).toStdString();
        if (name.find('\0') != std::string::npos ||
            !std::filesystem::is_regular_file(path, error) ||
            std::to_string(std::filesystem::file_size(path, error)) != line.substr(0, blank))
            return false;
    }
    return isNumber && listed == count;
}

/// A version, whatever it is, as somebody would write it down.
QByteArray propertyListOf(const QString& version) {
    QByteArray written;
    QXmlStreamWriter xml(&written);
    xml.writeStartElement(u"plist"_s);
    xml.writeStartElement(u"dict"_s);
    xml.writeTextElement(u"key"_s, u"CFBundleShortVersionString"_s);
    xml.writeTextElement(u"string"_s, version);
    xml.writeEndElement();
    xml.writeEndElement();
    return written;
}

void tryPropertyList(const Bundle& bundle, const QByteArray& bytes) {
    const QString file = u"Contents/Info.plist"_s;
    const ApplicationBundle application(bundle.path());
    bundle.write(file, bytes);
    const QString version = application.version();
    require(application.version() == version, "the same again");
    // Entities make a text longer than what it stands for, and Qt allows so much of that.
    constexpr qsizetype longestEntity = 4096;
    require(version == u"0.0.0"_s || version.size() <= bytes.size() * longestEntity,
            "a version isn't made from nothing");

    QString text = QString::fromUtf8(bytes);
    text.removeIf([](QChar character) {
        const bool isControl = character < u' ' && character != u'\t' && character != u'\n';
        return isControl || character > QChar::ReplacementCharacter;
    });
    bundle.write(file, propertyListOf(text));
    require(application.version() == text, "a version is read as it was written");
}

void tryManifest(const Bundle& bundle, const QByteArray& bytes) {
    bundle.write(u"Contents/Resources/manifest.txt"_s, bytes);
    require(Replacement::isWhole(bundle.path()) == isManifestOf(bundle.path(), bytes.toStdString()),
            "whole where it is what its manifest lists");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Bundle bundle;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    tryPropertyList(bundle, bytes);
    tryManifest(bundle, bytes);
    return 0;
}

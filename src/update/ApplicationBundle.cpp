// SPDX-License-Identifier: MIT
#include "ApplicationBundle.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {

#ifdef Q_OS_MACOS
const QString executableFolder = u"/Contents/MacOS"_s;
#else
const QString executableFolder = u"/Contents/bin"_s;
#endif

/// The text that a property list's outermost dictionary has for a key, if it is a text.
std::optional<QString> textForKey(QIODevice* propertyList, QStringView key) {
    QXmlStreamReader xml(propertyList);
    if (!xml.readNextStartElement() || xml.name() != "plist"_L1 || !xml.readNextStartElement() ||
        xml.name() != "dict"_L1)
        return std::nullopt;
    while (xml.readNextStartElement()) {
        const bool isWanted = xml.name() == "key"_L1 && xml.readElementText() == key;
        if (isWanted) {
            if (!xml.readNextStartElement() || xml.name() != "string"_L1)
                return std::nullopt;
            const QString text = xml.readElementText();
            return xml.hasError() ? std::nullopt : std::optional(text);
        }
        if (xml.isStartElement())
            xml.skipCurrentElement();
    }
    return std::nullopt;
}

} // namespace

std::optional<ApplicationBundle> ApplicationBundle::running() {
    const QString path = QCoreApplication::applicationDirPath();
    if (!path.endsWith(executableFolder))
        return std::nullopt;
    return ApplicationBundle(path.chopped(executableFolder.size()));
}

QString ApplicationBundle::version() const {
    QFile file(m_mainPath + u"/Contents/Info.plist"_s);
    if (!file.open(QIODevice::ReadOnly))
        return u"0.0.0"_s;
    return textForKey(&file, u"CFBundleShortVersionString").value_or(u"0.0.0"_s);
}

QString ApplicationBundle::picturePath() const {
    return m_mainPath + u"/Contents/Resources/Lumora.png"_s;
}

std::optional<QString> ApplicationBundle::outermostPath() const {
    const QString extension = u".app"_s;
    const QStringList pieces = m_mainPath.split(extension, Qt::SkipEmptyParts);
    if (pieces.isEmpty())
        return std::nullopt;
    return pieces.first() + extension;
}

QString ApplicationBundle::executableIn(const QString& bundlePath) {
    return bundlePath + executableFolder + u"/Lumora"_s;
}

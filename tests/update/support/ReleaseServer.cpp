// SPDX-License-Identifier: MIT
#include "ReleaseServer.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 30'000;

/// With a key that nobody keeps, for a day.
void makeCertificate(const QString& certificate, const QString& key) {
    QProcess process;
    process.start(u"openssl"_s,
                  {u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s,
                   u"ec_paramgen_curve:P-256"_s, u"-nodes"_s, u"-days"_s, u"1"_s, u"-subj"_s,
                   u"/CN=Lumora test"_s, u"-addext"_s, u"subjectAltName=IP:127.0.0.1"_s,
                   u"-keyout"_s, key, u"-out"_s, certificate});
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("openssl could not make a certificate");
}

} // namespace

ReleaseServer::ReleaseServer(Transport transport) {
    QStringList arguments{u"-B"_s, QStringLiteral(LUMORA_RELEASE_SERVER), m_folder.path()};
    if (transport == Transport::Encrypted) {
        makeCertificate(certificatePath(), m_folder.filePath(u"key"_s));
        arguments << certificatePath() << m_folder.filePath(u"key"_s);
    }
    writePlan();
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(LUMORA_PYTHON), arguments);
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(patience))
            qFatal("The release server did not start");
    }
    m_address =
        (transport == Transport::Encrypted ? u"https://127.0.0.1:"_s : u"http://127.0.0.1:"_s) +
        QString::fromLatin1(m_process.readLine().trimmed());
}

ReleaseServer::~ReleaseServer() {
    stop();
}

void ReleaseServer::answer(const QString& path, const QJsonObject& answer) {
    m_plan[path] = answer;
    writePlan();
}

void ReleaseServer::redirect(const QString& path, const QString& target, int status) {
    answer(path, {{u"status"_s, status},
                  {u"headers"_s, QJsonObject{{u"Location"_s, target}}},
                  {u"text"_s, u"It has moved."_s}});
}

void ReleaseServer::reset() {
    m_plan = {};
    writePlan();
    QFile::remove(m_folder.filePath(u"requests.jsonl"_s));
}

void ReleaseServer::writePlan() const {
    QSaveFile file(m_folder.filePath(u"plan.json"_s));
    const QByteArray plan = QJsonDocument(m_plan).toJson();
    if (!file.open(QIODevice::WriteOnly) || file.write(plan) != plan.size() || !file.commit())
        qFatal("The release server's plan could not be written");
}

ReleaseSource ReleaseServer::source(const QString& owner) const {
    return {.api = m_address, .owner = owner, .program = QStringLiteral(LUMORA_FETCH)};
}

QString ReleaseServer::latestPath(const QString& owner) {
    return u"/repos/"_s + owner + u"/Lumora-releases/releases/latest"_s;
}

void ReleaseServer::offer(const QString& version, const QString& path, const QString& owner) {
    offer(version, QJsonObject{{u"browser_download_url"_s, m_address + path}}, owner);
}

void ReleaseServer::offerWithDigest(const QString& version, const QJsonValue& digest) {
    const QString archive = m_address + u"/archive.tar.gz"_s;
    offer(version, QJsonObject{{u"browser_download_url"_s, archive}, {u"digest"_s, digest}},
          u"someone"_s);
}

void ReleaseServer::offer(const QString& version, QJsonObject asset, const QString& owner) {
    asset[u"name"_s] = u"Lumora.tar.gz"_s;
    const QJsonObject release{{u"tag_name"_s, version}, {u"assets"_s, QJsonArray{asset}}};
    answer(latestPath(owner), {{u"text"_s, QString::fromUtf8(QJsonDocument(release).toJson())}});
}

QList<QJsonObject> ReleaseServer::requests() const {
    QFile file(m_folder.filePath(u"requests.jsonl"_s));
    QList<QJsonObject> requests;
    if (!file.open(QIODevice::ReadOnly))
        return requests;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (const auto request = QJsonDocument::fromJson(line); request.isObject())
            requests.append(request.object());
    }
    return requests;
}

qsizetype ReleaseServer::requestsFor(const QString& path) const {
    return std::ranges::count_if(requests(), [&path](const QJsonObject& request) {
        return request["path"_L1].toString() == path;
    });
}

void ReleaseServer::open(const QString& gate) const {
    QFile file(this->gate(gate));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("A gate could not be opened");
}

bool ReleaseServer::hasReached(const QString& gate) const {
    return QFile::exists(this->gate(gate) + u".reached"_s);
}

bool ReleaseServer::floods() {
    constexpr int plenty = 2'000;
    return m_process.waitForReadyRead(plenty) && m_process.readLine().trimmed() == "flood";
}

void ReleaseServer::stop() {
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(patience))
        m_process.kill();
}

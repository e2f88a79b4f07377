// SPDX-License-Identifier: MIT
#include "HttpGet.h"

#include "UpdateFailure.h"
#include "UpdateFiles.h"

#include <QCoroNetworkReply>
#include <QHostAddress>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

bool isEncrypted(const QUrl& address) {
    return address.scheme() == "https"_L1 && !address.host().isEmpty();
}

bool isLoopback(const QString& host) {
    return host == "localhost"_L1 || QHostAddress(host).isLoopback();
}

QString notAllowed(const QUrl& address) {
    return u"The address "_s + address.toDisplayString() +
           u" is not used, because the connection to it would not be secure."_s;
}

/// One request, stopped early if need be.
class Transfer final {
public:
    Transfer(QNetworkReply* reply, QIODevice* sink) : m_reply(reply), m_sink(sink) {
        // Otherwise Qt takes in all that a fast server sends while this thread is slow.
        constexpr qint64 mostUnread = qint64{256} * 1024;
        reply->setReadBufferSize(mostUnread);
        QObject::connect(reply, &QNetworkReply::readyRead, &m_context, [this] { pass(); });
    }

    [[nodiscard]] QNetworkReply* reply() const { return m_reply.get(); }

    /// Passes on what is left and tells why the answer isn't whole, if it isn't.
    [[nodiscard]] QString finish() {
        pass();
        if (!m_refusal.isEmpty())
            return m_refusal;
        // Qt counts answers such as "not found" among the errors.
        if (isAnsweredOtherwise())
            return {};
        if (m_reply->error() == QNetworkReply::NoError)
            return isShorterThanAnnounced() ? u"Connection closed"_s : QString();
        // Nobody else cancels.
        if (m_reply->error() == QNetworkReply::OperationCanceledError)
            return u"The server did not answer in time."_s;
        return m_reply->errorString();
    }

    /// Where else to ask; an empty address if this was the answer.
    [[nodiscard]] QUrl redirectTarget() const {
        const QUrl target = m_reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
        return target.isEmpty() ? target : m_reply->url().resolved(target);
    }

    [[nodiscard]] int status() const {
        return m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    }

private:
    static constexpr int ok = 200;

    /// Such an answer is none but for its status.
    [[nodiscard]] bool isAnsweredOtherwise() const { return status() != 0 && status() != ok; }

    /// Qt now and then takes a connection's early end for the end of the answer. Of an answer
    /// in chunks, or one that it has unpacked, there is no telling.
    [[nodiscard]] bool isShorterThanAnnounced() const {
        const QVariant length = m_reply->header(QNetworkRequest::ContentLengthHeader);
        return length.isValid() && !m_reply->hasRawHeader("Content-Encoding") &&
               m_received < length.toLongLong();
    }

    void pass() {
        if (!m_reply->isOpen())
            return;
        const QByteArray bytes = m_reply->readAll();
        m_received += bytes.size();
        // The page about an error or a redirect isn't what is fetched, and need not have an end.
        constexpr qint64 longest = qint64{1024} * 1024;
        if (isAnsweredOtherwise() && m_received > longest)
            stop({});
        else if (!isAnsweredOtherwise() && !UpdateFiles::writeAll(*m_sink, bytes))
            stop(m_sink->errorString());
    }

    /// The last thing to be done here: whoever awaits the reply goes on at once.
    void stop(const QString& reason) {
        m_refusal = reason;
        m_reply->abort();
    }

    std::unique_ptr<QNetworkReply, QScopedPointerDeleteLater> m_reply;
    QIODevice* m_sink;
    qint64 m_received{};
    QString m_refusal;
    /// The reply lives on for a while, and may still have something to say.
    QObject m_context;
};

} // namespace

bool AddressRule::isAllowed(const QUrl& address) {
    return isEncrypted(address) || (address.scheme() == "http"_L1 && isLoopback(address.host()));
}

bool AddressRule::isAllowedRedirect(const QUrl& from, const QUrl& to) {
    return isAllowed(to) && (isEncrypted(to) || !isEncrypted(from));
}

QCoro::Task<int> httpGet(QNetworkAccessManager* network, QNetworkRequest request, QIODevice* sink) {
    if (!AddressRule::isAllowed(request.url()))
        throw UpdateFailure(notAllowed(request.url()));
    // Qt asks about redirects too, but then follows the second one twice.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    constexpr int mostRedirects = 20;
    for (int redirects = 0; redirects <= mostRedirects; ++redirects) {
        Transfer transfer(network->get(request), sink);
        co_await transfer.reply();
        if (const QString failure = transfer.finish(); !failure.isEmpty())
            throw UpdateFailure(failure);
        const QUrl target = transfer.redirectTarget();
        if (target.isEmpty())
            co_return transfer.status();
        if (!AddressRule::isAllowedRedirect(request.url(), target))
            throw UpdateFailure(notAllowed(target));
        request.setUrl(target);
    }
    throw UpdateFailure(u"The server redirected the request too often."_s);
}

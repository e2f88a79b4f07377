// SPDX-License-Identifier: MIT
#include "Fetch.h"

#include "FetchRequest.h"
#include "HttpGet.h"
#include "LangManager.h"
#include "ToolkitTexts.h"
#include "UpdateFailure.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QSocketNotifier>
#include <QUrl>

#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

/// What is printed is for the user to read: Qt's remarks don't belong there.
void ignoreMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

FetchStatus complain(const QString& reason) {
    std::fprintf(stderr, "%s\n", reason.toUtf8().constData());
    return FetchStatus::NoAnswer;
}

void endAtTheEndOfInput() {
    std::array<char, 64> ignored{};
    if (::read(STDIN_FILENO, ignored.data(), ignored.size()) <= 0)
        std::_Exit(static_cast<int>(FetchStatus::NoAnswer));
}

QNetworkRequest requestOf(const QStringList& arguments) {
    QNetworkRequest request(QUrl(arguments[1], QUrl::StrictMode));
    request.setTransferTimeout(arguments[0].toInt());
    for (const QString& header : arguments.sliced(2)) {
        const QString separator = u": "_s;
        request.setRawHeader(header.section(separator, 0, 0).toUtf8(),
                             header.section(separator, 1).toUtf8());
    }
    return request;
}

/// Doesn't throw: whoever waits for it would wait for ever.
QCoro::Task<FetchStatus> print(QNetworkAccessManager* network, QNetworkRequest request,
                               QFile* sink) {
    constexpr int ok = 200;
    try {
        const bool isFetched = co_await httpGet(network, request, sink) == ok;
        co_return isFetched ? FetchStatus::Fetched : FetchStatus::AnsweredOtherwise;
    } catch (const UpdateFailure& failure) {
        complain(failure.description());
    } catch (const std::exception& failure) {
        complain(QString::fromLocal8Bit(failure.what()));
    }
    co_return FetchStatus::NoAnswer;
}

} // namespace

FetchStatus Fetch::run(int argc, char* argv[]) {
    qInstallMessageHandler(ignoreMessage);
    // None of the arguments is Qt's, whatever an address looks like.
    int count = 1;
    const QCoreApplication application(count, argv);
    // Lumora's own, for its preferences.
    QCoreApplication::setOrganizationName(u"Lumora"_s);
    QCoreApplication::setApplicationName(u"Lumora"_s);
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (arguments.size() < 2 || arguments[0].toInt() <= 0)
        return complain(u"lumora-fetch: usage: lumora-fetch PATIENCE ADDRESS [HEADER]..."_s);
    const ToolkitTexts toolkitTexts(LangManager::shared());
    const QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &input, endAtTheEndOfInput);

    QFile sink;
    if (!sink.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return complain(sink.errorString());
    QNetworkAccessManager network;
    return QCoro::waitFor(print(&network, requestOf(arguments), &sink));
}

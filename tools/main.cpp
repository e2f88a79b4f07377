// SPDX-License-Identifier: MIT
#include "BrewDiscovery.h"
#include "BrewManager.h"
#include "PublicationRecorder.h"
#include "ShellProcess.h"
#include "TextForm.h"
#include "TracedOperation.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int wrongUsage = 2;

void printLine(const QString& line) {
    std::puts(qUtf8Printable(line));
    // Whoever reads along through a pipe wants each change when it happens.
    std::fflush(stdout);
}

int complain(const QString& complaint, int status) {
    std::fprintf(stderr, "lumora-trace: %s\n", qUtf8Printable(complaint));
    return status;
}

QString description() {
    QString text =
        u"Runs one operation of Lumora's BrewManager and prints what its observers see: a line\n"
        "for every change of a published property, then the operation's result.\n\n"
        "The operation really happens: uninstall uninstalls.\n\nOperations:"_s;
    for (const TracedOperation& operation : TracedOperation::all())
        text += u"\n  "_s + (operation.name + u' ' + operation.synopsis).trimmed();
    return text;
}

QCommandLineOption brewOption() {
    return {u"brew"_s,
            u"The brew to run; without it, brew is looked for in Homebrew's usual places."_s,
            u"path"_s};
}

BrewDiscovery discoveryFor(const QString& brewPath) {
    if (brewPath.isEmpty())
        return BrewDiscovery::usual(homeDirectory());
    return {.candidates = {QFileInfo(brewPath).absoluteFilePath().toStdString()},
            .askShell = false};
}

int trace(const TracedOperation& operation, const QStringList& arguments, const QString& brewPath) {
    BrewManager manager(discoveryFor(brewPath));
    if (!*manager.brewAvailable)
        return complain(u"there is no brew"_s, EXIT_FAILURE);

    const PublicationRecorder recorder(manager, printLine);
    const QString result = QCoro::waitFor(operation.start(manager, arguments));
    if (const auto complaint = recorder.looseAnnouncement())
        printLine(*complaint);
    printLine(u"result: "_s + result);
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char* argv[]) {
    prepareForChildProcesses();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"lumora-trace"_s);

    QCommandLineParser parser;
    parser.setApplicationDescription(description());
    parser.addHelpOption();
    const QCommandLineOption brew = brewOption();
    parser.addOption(brew);
    parser.addPositionalArgument(u"operation"_s, u"One of the operations above."_s);
    parser.addPositionalArgument(u"arguments"_s, u"What the operation takes, unchanged."_s,
                                 u"[arguments]"_s);
    // A name may begin with a dash, and it belongs to the operation.
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    parser.process(application);

    QStringList arguments = parser.positionalArguments();
    if (arguments.isEmpty())
        return complain(u"no operation was given; --help lists them"_s, wrongUsage);
    const QString name = arguments.takeFirst();
    const auto& operations = TracedOperation::all();
    const auto operation = std::ranges::find(operations, name, &TracedOperation::name);
    if (operation == operations.end()) {
        return complain(textForm(name) + u" is not an operation; --help lists them"_s, wrongUsage);
    }
    if (const QString complaint = operation->complaintAbout(arguments); !complaint.isEmpty())
        return complain(complaint, wrongUsage);
    return trace(*operation, arguments, parser.value(brew));
}

// SPDX-License-Identifier: MIT
#include "ScriptedBrew.h"

#include "BrewAt.h"
#include "Reports.h"

using namespace Qt::StringLiterals;

ScriptedBrew::ScriptedBrew() {
    setFormulae({});
    setCasks({});
    setOutdated({});
    setTaps({});
}

void ScriptedBrew::setFormulae(const QList<BrewPackage>& packages) {
    answer(infoFormulae, Reports::installed(packages));
}

void ScriptedBrew::setCasks(const QList<BrewPackage>& packages) {
    answer(infoCasks, Reports::installed(packages));
}

void ScriptedBrew::setOutdated(const QList<OutdatedPackage>& packages) {
    answer(outdated, Reports::outdated(packages));
}

void ScriptedBrew::setTaps(const QStringList& taps) {
    answer(tap, Reports::lines(taps));
}

void ScriptedBrew::answer(const QString& commandLine, const QByteArray& output, int status,
                          const QByteArray& error) {
    QByteArray script = output.isEmpty() ? QByteArray() : m_brew.print(output);
    if (!error.isEmpty())
        script += m_brew.printError(error);
    m_entries[commandLine].script = script + "exit " + QByteArray::number(status) + '\n';
    write();
}

void ScriptedBrew::hold(const QString& commandLine) {
    m_entries[commandLine].gate = u"gate-%1"_s.arg(m_gates++);
    write();
}

void ScriptedBrew::release(const QString& commandLine) {
    m_brew.open(std::exchange(m_entries[commandLine].gate, {}));
    write();
}

void ScriptedBrew::write() const {
    QByteArray body = m_brew.recordArguments() + "case \"$*\" in\n";
    for (auto entry = m_entries.begin(); entry != m_entries.end(); ++entry) {
        QByteArray pattern = entry.key().toUtf8();
        body += '\'' + pattern.replace('\'', "'\\''") + "')\n";
        if (!entry->gate.isEmpty())
            body += m_brew.waitFor(entry->gate);
        body += entry->script + ";;\n";
    }
    m_brew.setBody(body + "esac\n");
}

QStringList ScriptedBrew::runs() const {
    QStringList lines;
    for (const QStringList& arguments : m_brew.recordedRuns())
        lines.append(arguments.join(u' '));
    return lines;
}

QStringList ScriptedBrew::newRuns() {
    const QStringList all = runs();
    return all.sliced(std::exchange(m_seen, all.size()));
}

BrewDiscovery ScriptedBrew::discovery() const {
    return brewAt(m_brew);
}

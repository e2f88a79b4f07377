// SPDX-License-Identifier: MIT
#include "DetachedRun.h"

#include <new>
#include <system_error>
#include <thread>

void startDetached(const QString& brewPath, const QStringList& arguments,
                   std::function<void(RunOutcome)> receive) {
    try {
        std::vector<std::string> args;
        for (const QString& argument : arguments)
            args.push_back(argument.toStdString());
        std::thread([receive, path = brewPath.toStdString(), args = std::move(args)] {
            receive(runBrewSync(path, args));
        }).detach();
    } catch (const std::system_error& error) {
        receive(LaunchError{std::string("No thread could be started for brew: ") + error.what()});
    } catch (const std::bad_alloc&) {
        receive(LaunchError::outOfMemory());
    }
}

// SPDX-License-Identifier: MIT
#include "DetachedRun.h"

#include <QPromise>

#include <new>
#include <system_error>
#include <thread>

QFuture<std::shared_ptr<const RunOutcome>> runDetached(const QString& brewPath,
                                                       const QStringList& arguments) {
    using Promise = QPromise<std::shared_ptr<const RunOutcome>>;
    const auto promise = std::make_shared<Promise>();
    promise->start();
    const auto finish = [promise](RunOutcome outcome) {
        promise->addResult(std::make_shared<const RunOutcome>(std::move(outcome)));
        promise->finish();
    };

    try {
        std::vector<std::string> args;
        for (const QString& argument : arguments)
            args.push_back(argument.toStdString());
        std::thread([finish, path = brewPath.toStdString(), args = std::move(args)] {
            finish(runBrewSync(path, args));
        }).detach();
    } catch (const std::system_error& error) {
        finish(LaunchError{std::string("No thread could be started for brew: ") + error.what()});
    } catch (const std::bad_alloc&) {
        finish(LaunchError::outOfMemory());
    }
    return promise->future();
}

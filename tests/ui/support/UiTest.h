// SPDX-License-Identifier: MIT
#pragma once

#include "FreshHome.h"

#include <QTest>

#include <functional>

/// The surroundings of every test of the interface: an application with Lumora's style, fonts
/// and colours, in English, whose home and preferences are the test's own.
namespace UiTest {

/// Makes the application, calls `run` and returns its exit status.
int runInApplication(int& argc, char** argv, const std::function<int()>& run);

} // namespace UiTest

/// The main() of a test program whose class this is.
#define LUMORA_UI_TEST_MAIN(Test)                                                                  \
    int main(int argc, char* argv[]) {                                                             \
        return UiTest::runInApplication(argc, argv, [&] {                                          \
            Test test;                                                                             \
            return QTest::qExec(&test, argc, argv);                                                \
        });                                                                                        \
    }

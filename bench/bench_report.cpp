// SPDX-License-Identifier: MIT
//
// Prints a report of so many formulae, for a brew that has them installed.
// Usage: bench_report COUNT
#include "Reports.h"

#include <cstdio>
#include <cstdlib>

int main(int argc, char* argv[]) {
    const std::string report = reportOf(argc > 1 ? std::atoi(argv[1]) : wholeCatalogue);
    return std::fwrite(report.data(), 1, report.size(), stdout) == report.size() ? EXIT_SUCCESS
                                                                                 : EXIT_FAILURE;
}

// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

// Reports as brew lays them out, with packages that don't exist.

inline const QByteArray installedReport = R"json({
  "formulae": [
    {
      "name": "teapot",
      "full_name": "kitchen/tools/teapot",
      "tap": "kitchen/tools",
      "oldnames": [],
      "aliases": ["kettle", "tea@2"],
      "desc": "Short, \"stout\" & 100 % \u2615 한국어",
      "license": null,
      "homepage": "https://teapot.example/",
      "versions": {
        "stable": "2.10.1_3",
        "head": "HEAD",
        "bottle": true
      },
      "urls": {
        "stable": {"url": "https://teapot.example/teapot.tar.gz", "checksum": "00ff"}
      },
      "revision": 3,
      "version_scheme": 0,
      "bottle": {},
      "dependencies": ["handle", "spout@3", "lid"],
      "requirements": [{"name": "linux", "version": null, "specs": ["stable"]}],
      "caveats": "Mind the steam.\nPour slowly.\n",
      "installed": [
        {
          "version": "2.9",
          "used_options": [],
          "built_as_bottle": true,
          "time": 1700000000,
          "runtime_dependencies": [{"full_name": "handle", "version": "1.0"}],
          "installed_as_dependency": true,
          "installed_on_request": false
        },
        {
          "version": "2.10.1_3",
          "installed_as_dependency": false,
          "installed_on_request": true
        }
      ],
      "linked_keg": null,
      "pinned": false,
      "outdated": true,
      "ruby_source_checksum": {"sha256": "abcd"}
    },
    {
      "name": "spoon",
      "versions": {"stable": null, "head": null},
      "installed": [],
      "outdated": false
    }
  ],
  "casks": [
    {
      "token": "cupboard",
      "full_token": "kitchen/room/cupboard",
      "old_tokens": [],
      "name": ["Cupboard", "식기장"],
      "desc": "Keeps cups",
      "homepage": "https://cupboard.example/?a=1&b=2",
      "version": "3.2,21",
      "installed": "3.1,20",
      "installed_time": 1700000000,
      "outdated": true,
      "sha256": "no_check",
      "artifacts": [{"app": ["Cupboard.app"]}, {"zap": [{"trash": "~/Cups"}]}],
      "depends_on": {"macos": {">=": ["12"]}}
    },
    {
      "token": "font-tea",
      "name": [],
      "desc": null,
      "installed": null
    }
  ]
}
)json";

inline const QByteArray outdatedReport = R"json({
  "formulae": [
    {
      "name": "teapot",
      "installed_versions": ["2.9", "2.10.1_3"],
      "current_version": "3.0",
      "pinned": true,
      "pinned_version": "2.9"
    },
    {
      "name": "kitchen/tools/spoon",
      "installed_versions": [],
      "current_version": "1.1",
      "pinned": null
    }
  ],
  "casks": [
    {
      "name": "cupboard",
      "installed_versions": "3.1,20",
      "current_version": "3.2,21"
    }
  ]
}
)json";

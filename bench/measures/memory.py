# SPDX-License-Identifier: MIT
"""Resident memory: with packages, a minute later with an answer about the latest release, and what
more packages add to it; what is left behind by what users do and undo."""

from __future__ import annotations

import http.server
import json
import shutil
import ssl
import statistics
import subprocess
import threading
import time
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path

from .processes import status_field
from .setting import Setting
from .table import Row

ROUNDS = 3
USUAL, MANY = 300, 8_300
LOADED, MINUTE = 8, 60
# After so many cycles all is there that is kept once.
WARM = 48
PARTS = 5
# Kibibytes of 100 cycles, which are 60 bytes of each of the four things that a cycle does: the
# bound of scripts/soak, below which there are libX11's accounts, letters and symbols.
MOST_LEFT = 24.0


class LatestRelease(http.server.BaseHTTPRequestHandler):
    """Answers every question about it with one that is older than ours."""

    def do_GET(self) -> None:
        body = b'{"tag_name": "0.0.1", "assets": []}'
        self.send_response(200)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)
        self.server.asked += 1

    def log_message(self, *_: object) -> None:
        pass


@contextmanager
def release_service(folder: Path) -> Iterator[tuple[http.server.ThreadingHTTPServer, Path]]:
    """An encrypted one, and the certificate that vouches for it."""
    certificate, key = folder / "certificate.pem", folder / "key.pem"
    subprocess.run(
        ["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256",
         "-nodes", "-days", "1", "-subj", "/CN=bench", "-addext", "subjectAltName=IP:127.0.0.1",
         "-keyout", key, "-out", certificate], check=True, stderr=subprocess.DEVNULL)
    with http.server.ThreadingHTTPServer(("127.0.0.1", 0), LatestRelease) as server:
        server.asked = 0
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(certificate, key)
        server.socket = context.wrap_socket(server.socket, server_side=True)
        threading.Thread(target=server.serve_forever, daemon=True).start()
        yield server, certificate
        server.shutdown()


def formulae(brew: str, count: int) -> list[dict]:
    """So many, like those of the sample."""
    report = subprocess.run([brew, "info", "--json=v2", "--installed", "--formula"], check=True,
                            stdout=subprocess.PIPE)
    known = json.loads(report.stdout)["formulae"]
    return [known[i % len(known)] | {"name": f"{known[i % len(known)]['name']}-{i}"}
            for i in range(count)]


def brew_with(setting: Setting, packages: list[dict]) -> str:
    report = json.dumps({"formulae": packages, "casks": []}).encode()
    return setting.brew_printing(report, f"sample-{len(packages)}")


def megabytes_of_texts(packages: list[dict]) -> float:
    """In UTF-16, what is kept of them."""
    kept = [package[key] or "" for package in packages
            for key in ("name", "full_name", "desc", "homepage")]
    kept += [name for package in packages for name in package["dependencies"]]
    kept += [version for package in packages
             for version in (package["versions"]["stable"], package["installed"][0]["version"])]
    return sum(2 * len(text) for text in kept) / 2**20


def bundled(program: str, folder: Path) -> str:
    """The program where it is the application of a bundle: nothing else asks for releases."""
    executable = folder / "Lumora.app/Contents/bin/Lumora"
    executable.parent.mkdir(parents=True)
    shutil.copy(program, executable)
    return str(executable)


def left_behind(setting: Setting) -> list[Row]:
    """A sheet, a search, another language and the other appearance, some 200 times."""
    output = subprocess.run([setting.program("interaction"), str(USUAL), "--cycles"],
                            stdout=subprocess.PIPE, text=True, check=True,
                            env=setting.environment).stdout
    samples = [tuple(map(float, line.split("\t"))) for line in output.splitlines()]
    cycles, heap, own = zip(*(sample for sample in samples if sample[0] >= WARM))

    def growth(sizes: tuple[float, ...]) -> float:
        # What is lost is lost all the time, and a picture that is kept or dropped is so once.
        length = len(cycles) // PARTS
        parts = [slice(part * length, (part + 1) * length) for part in range(PARTS)]
        return 100 * statistics.median(
            statistics.linear_regression(cycles[part], sizes[part]).slope for part in parts)

    return [Row("heap in use, growth per 100 cycles", growth(heap), "KiB", MOST_LEFT),
            Row("anonymous, growth per 100 cycles", growth(own), "KiB")]


def measure(setting: Setting) -> list[Row]:
    usual, many = formulae(setting.brew, USUAL), formulae(setting.brew, MANY)
    few_brew, many_brew = brew_with(setting, usual), brew_with(setting, many)
    launch = setting.program("launch")
    asking = bundled(launch, setting.folder)
    sizes: dict[str, list[float]] = {}

    def note(name: str, process: subprocess.Popen[bytes]) -> None:
        sizes.setdefault(name, []).append(status_field(process.pid, "VmRSS") / 1024)

    with release_service(setting.folder) as (server, certificate):
        environment = setting.environment | {
            "LUMORA_BENCH_RELEASES": f"https://127.0.0.1:{server.server_address[1]}",
            "LUMORA_TRUSTED_CERTIFICATE": str(certificate)}

        def start(*command: str, of: dict[str, str] = setting.environment) -> subprocess.Popen:
            return subprocess.Popen(command, env=dict(of), stdout=subprocess.DEVNULL,
                                    stderr=subprocess.DEVNULL)

        for _ in range(ROUNDS):
            running = {"plain": start(setting.program("plain_window")),
                       "usual": start(launch, few_brew),
                       "many": start(launch, many_brew),
                       "asking": start(asking, few_brew, of=environment)}
            try:
                time.sleep(LOADED)
                for name in ("plain", "usual", "many"):
                    note(name, running[name])
                time.sleep(MINUTE - LOADED)
                note("minute", running["asking"])
            finally:
                for process in running.values():
                    process.kill()
                    process.wait()
        if server.asked != ROUNDS:
            raise SystemExit(f"the release service was asked {server.asked} times")
    medians = {name: statistics.median(each) for name, each in sizes.items()}
    thousands = (MANY - USUAL) / 1000
    plain = (1.15, medians["plain"], "plain window")
    return [
        Row("resident, 300 packages", medians["usual"], "MB", *plain),
        Row("resident after a minute, release check included", medians["minute"], "MB", *plain),
        Row("resident, growth per 1,000 packages",
            (medians["many"] - medians["usual"]) / thousands, "MB", None,
            (megabytes_of_texts(many) - megabytes_of_texts(usual)) / thousands,
            "their texts"),
        *left_behind(setting),
    ]

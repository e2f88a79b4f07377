# SPDX-License-Identifier: MIT
"""A release service on this machine, for tests.

Usage: release_server.py FOLDER [CERTIFICATE KEY]

Listens on a free port of 127.0.0.1, prints it, and serves until its standard input ends.
With a certificate it speaks https. FOLDER/plan.json says how each path is answered, as an
object with these members, all optional:

  status   (200)  the status code
  headers  ({})   header lines by name
  text            the body
  file            path of a file that is the body
  silence         accept the request and never answer it
  gate            path of a file to wait for before answering; a file beside it, with
                  ".reached" behind its name, tells that it is waited for
  halfway         the same, after half of the body
  cut             how many bytes of the body are announced, but not sent
  endless         send chunks of blanks after the body for as long as somebody listens
  chunked         send the body in chunks instead of announcing its length
  raw             answer with these bytes and nothing else

Other paths are not found. FOLDER/requests.jsonl gets a line for every request.
"""

import http.server
import json
import pathlib
import ssl
import sys
import threading
import time


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    log_lock = threading.Lock()

    def do_GET(self):
        plan = json.loads((self.server.folder / "plan.json").read_text())
        answer = plan.get(self.path, {"status": 404})
        # How their names are written is the client's business.
        headers = {name.lower(): value for name, value in self.headers.items()}
        request = {"path": self.path, "headers": headers}
        with self.log_lock, open(self.server.folder / "requests.jsonl", "a") as log:
            log.write(json.dumps(request) + "\n")
        self.close_connection = True
        if "gate" in answer:
            self.wait_for(answer["gate"])
        if answer.get("silence"):
            # Ends when the client has given up.
            self.rfile.read(1)
        elif "raw" in answer:
            self.wfile.write(answer["raw"].encode())
        else:
            self.send_answer(answer)

    def send_answer(self, answer):
        if "file" in answer:
            body = pathlib.Path(answer["file"]).read_bytes()
        else:
            body = answer.get("text", "").encode()
        self.send_response(answer.get("status", 200))
        for name, value in answer.get("headers", {}).items():
            self.send_header(name, value)
        endless = answer.get("endless", False)
        chunked = answer.get("chunked", endless)
        if chunked:
            self.send_header("Transfer-Encoding", "chunked")
        else:
            self.send_header("Content-Length", str(len(body)))
        self.end_headers()

        cut = answer.get("cut", 0)
        sent = body[: len(body) - cut]
        middle = len(sent) // 2
        self.send_piece(sent[:middle], chunked)
        if "halfway" in answer:
            self.wfile.flush()
            self.wait_for(answer["halfway"])
        self.send_piece(sent[middle:], chunked)
        if endless:
            self.send_without_end()
        if chunked and not cut:
            self.wfile.write(b"0\r\n\r\n")

    def send_without_end(self):
        """What one connection's buffers may hold takes no reader."""
        blanks = b" " * 65536
        for _ in range(32 * 1024 * 1024 // len(blanks)):
            self.send_piece(blanks, chunked=True)
        print("flood", flush=True)
        while True:
            self.send_piece(blanks, chunked=True)

    def send_piece(self, piece, chunked):
        if chunked and piece:
            piece = b"%x\r\n%s\r\n" % (len(piece), piece)
        self.wfile.write(piece)

    @staticmethod
    def wait_for(path):
        pathlib.Path(path + ".reached").touch()
        while not pathlib.Path(path).exists():
            time.sleep(0.01)

    def log_message(self, *_):
        pass


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True

    def handle_error(self, request, client_address):
        # Clients that go away in the middle are what some tests are about.
        if not isinstance(sys.exc_info()[1], (OSError, ssl.SSLError)):
            super().handle_error(request, client_address)


def main(folder, certificate=None, key=None):
    server = Server(("127.0.0.1", 0), Handler)
    server.folder = pathlib.Path(folder)
    if certificate:
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(certificate, key)
        # The handshake belongs to the connection's thread.
        server.socket = context.wrap_socket(
            server.socket, server_side=True, do_handshake_on_connect=False
        )
    threading.Thread(target=server.serve_forever, daemon=True).start()
    print(server.server_address[1], flush=True)
    sys.stdin.read()


if __name__ == "__main__":
    main(*sys.argv[1:])

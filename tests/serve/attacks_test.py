"""The server of `tarvane serve` under requests that no page of its own makes, on the loopback interface alone.

    attacks_test.py TARVANE EXAMPLES
"""

import contextlib
import http.client
import json
import os
import re
import resource
import shutil
import signal
import socket
import stat
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

PROGRAM, EXAMPLES = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()
MEGABYTE = 1 << 20


class Server:
    """A server of the examples, in a folder of its own, with the doors that a browser would use."""

    def __init__(self, *arguments, environment=None, ignores=None):
        self.folder = Path(tempfile.mkdtemp(prefix="tarvane-serve-test-"))
        self.files = self.folder / "files"
        self.files.mkdir()
        for example in EXAMPLES.glob("*.toml"):
            shutil.copy(example, self.files)
        self.runtime = self.folder / "runtime"
        self.runtime.mkdir(mode=0o700)
        variables = {**os.environ, "XDG_RUNTIME_DIR": str(self.runtime), "TMPDIR": str(self.folder)}
        variables.pop("DISPLAY", None)
        variables.pop("WAYLAND_DISPLAY", None)
        self.process = subprocess.Popen(
            [PROGRAM, "serve", str(self.files / "v101.toml"), "--no-browser", *arguments],
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, cwd=self.folder,
            preexec_fn=ignores and (lambda: signal.signal(ignores, signal.SIG_IGN)),
            env={**variables, **(environment or {})})
        first, second = self.process.stdout.readline(), self.process.stdout.readline()
        assert first, self.process.stderr.read()
        self.said = first + second
        self.port = int(re.search(r"http://127\.0\.0\.1:(\d+)/", first)[1])
        self.link = Path(re.search(r"open (\S+) in", second)[1])
        self.token = re.search(r"/#([0-9a-f]{64})\"", self.link.read_text())[1]
        status, headers, body = self.ask("POST", "/enter", {"token": self.token}, {"X-Tarvane": "1"})
        assert status == 200, body
        self.key, self.document = json.loads(body)["key"], json.loads(body)["document"]
        self.set_cookie = headers["Set-Cookie"]
        self.cookie = self.set_cookie.split(";")[0]

    def doors(self):
        return {"Cookie": self.cookie, "X-Tarvane": self.key}

    def ask(self, method, path, body=None, headers=None, without=()):
        """One request; its status, headers and body."""
        sent = dict(headers if headers is not None else self.doors())
        if body is not None:
            sent.setdefault("Content-Type", "application/json")
            body = body if isinstance(body, (bytes, str)) else json.dumps(body)
        for name in without:
            sent.pop(name, None)
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=60)
        try:
            connection.putrequest(method, path, skip_host="Host" in sent, skip_accept_encoding=True)
            for name, value in sent.items():
                connection.putheader(name, value)
            if body is not None and "Content-Length" not in sent:
                connection.putheader("Content-Length", str(len(body)))
            connection.endheaders(body.encode() if isinstance(body, str) else body)
            answer = connection.getresponse()
            return answer.status, answer.headers, answer.read()
        finally:
            connection.close()

    def head(self, line="POST /api/edit HTTP/1.1", *more):
        doors = [f"{name}: {value}" for name, value in self.doors().items()]
        lines = [line, f"Host: 127.0.0.1:{self.port}", *doors, "Content-Type: application/json", *more]
        return "\r\n".join(lines).encode() + b"\r\n"

    def children(self):
        """Processes that it has started."""
        return Path(f"/proc/{self.process.pid}/task").exists() and "".join(
            (task / "children").read_text() for task in Path(f"/proc/{self.process.pid}/task").iterdir()).split()

    def json(self, method, path, body=None):
        status, _, answer = self.ask(method, path, body)
        return status, json.loads(answer)

    def peak(self):
        """The most memory that it has had, in bytes."""
        text = Path(f"/proc/{self.process.pid}/status").read_text()
        return int(re.search(r"VmHWM:\s+(\d+) kB", text)[1]) * 1024

    def end(self, how=signal.SIGTERM):
        self.process.send_signal(how)
        return self.process.wait(timeout=60), self.process.stderr.read()

    def close(self):
        if self.process.poll() is None:
            self.end()
        self.process.stdout.close()
        self.process.stderr.close()
        shutil.rmtree(self.folder)


def send_until_closed(port, head, piece, most):
    """Bytes after a head, as many as the other side takes; what it says, and how many it took."""
    with socket.create_connection(("127.0.0.1", port), timeout=60) as to:
        to.sendall(head)
        sent = 0
        with contextlib.suppress(BrokenPipeError, ConnectionResetError):
            while sent < most:
                sent += to.send(piece)
        said = b""
        with contextlib.suppress(OSError):
            to.shutdown(socket.SHUT_WR)
            while block := to.recv(65536):
                said += block
        return said, sent


class Refusals(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.server = Server()

    @classmethod
    def tearDownClass(cls):
        cls.server.close()

    def status(self, *arguments, **names):
        return self.server.ask(*arguments, **names)[0]

    def changed(self, method, path, body=None, **headers):
        """The status of a sound request with headers changed; None: without it."""
        sent = {**self.server.doors(), **{name.replace("_", "-"): value for name, value in headers.items()}}
        sent = {name: value for name, value in sent.items() if value is not None}
        return self.status(method, path, body, sent)

    def test_the_token_is_handed_over_by_a_file_of_the_user_alone(self):
        server = self.server
        self.assertEqual(stat.S_IMODE(server.link.stat().st_mode), 0o600)
        self.assertEqual(server.link.parent, server.runtime)
        for secret in (server.token, server.key, server.cookie):
            self.assertNotIn(secret, server.said)
        arguments = Path(f"/proc/{server.process.pid}/cmdline").read_bytes()
        self.assertNotIn(server.token.encode(), arguments)
        self.assertRegex(server.set_cookie, rf"^tarvane-{server.port}=[0-9a-f]{{64}}; HttpOnly; SameSite=Strict; Path=/$")
        self.assertNotEqual(server.cookie.split("=")[1], server.token)

    def test_it_listens_on_the_loopback_address_alone(self):
        port = f"{self.server.port:04X}"
        sockets = [line.split() for name in ("tcp", "tcp6")
                   for line in Path(f"/proc/net/{name}").read_text().splitlines()[1:]]
        listening = [s[1] for s in sockets if s[3] == "0A" and s[1].endswith(":" + port)]
        self.assertEqual(listening, ["0100007F:" + port])

    def test_the_page_has_its_headers(self):
        for path in ("/", "/none", "/api/files"):
            _, headers, _ = self.server.ask("GET", path)
            self.assertIn("default-src 'none'", headers["Content-Security-Policy"])
            self.assertIn("frame-ancestors 'none'", headers["Content-Security-Policy"])
            self.assertEqual(headers["X-Content-Type-Options"], "nosniff")
            self.assertEqual(headers["Referrer-Policy"], "no-referrer")
            self.assertEqual(headers["Cache-Control"], "no-store")
            self.assertNotIn("Access-Control-Allow-Origin", headers)

    def test_the_page_has_the_font_of_drawings_from_the_server_alone(self):
        status, headers, body = self.server.ask("GET", "/tarvane-drawing.ttf")
        self.assertEqual((status, headers["Content-Type"]), (200, "font/ttf"))
        self.assertEqual(bytes(body[:4]), b"\0\1\0\0")
        _, headers, _ = self.server.ask("GET", "/")
        self.assertIn("; font-src 'self';", headers["Content-Security-Policy"])

    def test_a_foreign_host_is_refused_before_anything_else(self):
        port = self.server.port
        for host in (f"example.com:{port}", "127.0.0.1", f"127.0.0.1:{port + 1}", "", f"[::1]:{port}"):
            for method, path in (("GET", "/"), ("GET", "/api/files"), ("GET", "/none"), ("POST", "/enter")):
                self.assertEqual(self.changed(method, path, "{}" if method == "POST" else None, Host=host), 403,
                                 (host, path))
        self.assertEqual(self.changed("GET", "/api/files", Host=f"localhost:{port}"), 200)

    def test_foreign_and_null_origins_are_refused(self):
        port = self.server.port
        for origin in ("null", "http://example.com", f"http://127.0.0.1:{port + 1}", f"https://127.0.0.1:{port}"):
            self.assertEqual(self.changed("GET", "/api/files", Origin=origin), 403, origin)
            self.assertEqual(self.changed("POST", "/api/new", {"kind": "drum"}, Origin=origin), 403, origin)
        self.assertEqual(self.changed("GET", "/api/files", Origin=f"http://127.0.0.1:{port}"), 200)
        for site in ("cross-site", "same-site"):
            self.assertEqual(self.changed("GET", "/api/files", Sec_Fetch_Site=site), 403, site)

    def test_nothing_is_answered_without_cookie_and_key(self):
        token, key, cookie = self.server.token, self.server.key, self.server.cookie
        for path in ("/api/files", "/api/fields", f"/api/state?document={self.server.document}",
                     f"/api/download/toml?document={self.server.document}", "/api/none"):
            self.assertEqual(self.changed("GET", path, Cookie=None), 401, path)
            self.assertEqual(self.changed("GET", path, Cookie=cookie + "0"), 401, path)
            self.assertEqual(self.changed("GET", path, Cookie=f"tarvane-{self.server.port}={token}"), 401, path)
            self.assertEqual(self.changed("GET", path, X_Tarvane="1"), 401, path)
            self.assertEqual(self.changed("GET", path, X_Tarvane=cookie.split("=")[1]), 401, path)
            self.assertEqual(self.changed("GET", path, X_Tarvane=None), 403, path)
        for wrong in ("", token[:-1], token + "0", key, None, 5):
            self.assertEqual(self.changed("POST", "/enter", {"token": wrong}, Cookie=None, X_Tarvane="1"), 403, wrong)
        self.assertEqual(self.changed("POST", "/enter", {"token": token}, Cookie=None, X_Tarvane=None), 403)
        self.assertEqual(self.changed("POST", "/enter", {"token": token}, Cookie=None, X_Tarvane="1"), 200)

    def test_a_write_needs_our_header_and_json(self):
        body = {"kind": "drum"}
        self.assertEqual(self.changed("POST", "/api/new", body), 200)
        self.assertEqual(self.changed("POST", "/api/new", body, X_Tarvane=None), 403)
        for kind in ("text/plain", "application/x-www-form-urlencoded", ""):
            self.assertEqual(self.changed("POST", "/api/new", body, Content_Type=kind), 415, kind)
        for wrong in ("", "{", "[]", "null", "[" * 100000, '{"kind": "drum", "kind": "drum"}', '{"kind": 5}',
                      b'{"kind": "\xff"}'):
            self.assertEqual(self.changed("POST", "/api/new", wrong), 400, wrong[:40])

    def test_other_methods_are_refused(self):
        for method in ("PUT", "DELETE", "OPTIONS", "HEAD", "PATCH"):
            self.assertEqual(self.changed(method, "/api/files"), 405, method)

    def test_no_path_leads_out_of_the_folder(self):
        server = self.server
        secret = server.folder / "secret.toml"
        secret.write_text("P = 1\n")
        (server.files / "link.toml").symlink_to(secret)
        (server.files / "folder.toml").mkdir()
        listed = [file["name"] for file in server.json("GET", "/api/files")[1]["files"]]
        self.assertIn("v101.toml", listed)
        self.assertNotIn("link.toml", listed)
        self.assertNotIn("folder.toml", listed)
        for path in ("/../secret.toml", "/%2e%2e/secret.toml", "/files/v101.toml", "/v101.toml", "//etc/passwd",
                     "/api/../secret.toml", "/assets/index.html", "/index.html%2f.."):
            self.assertEqual(self.status("GET", path), 404, path)
        for handle in ("../secret.toml", str(secret), "link.toml", "v101.toml", "", "f0", "f99999", "..", "d1"):
            self.assertEqual(self.status("POST", "/api/open", {"handle": handle}), 404, handle)
        made = server.json("POST", "/api/new", {"kind": "drum"})[1]["document"]
        for name in ("../secret.toml", str(secret), "..toml", ".hidden.toml", "a/b.toml", "a\\b.toml", "secret.txt",
                     "a\0.toml", "-x.toml", " x.toml", "ü.toml", ".toml", "x" * 100 + ".toml", "a\n.toml"):
            self.assertEqual(self.status("POST", "/api/save", {"document": made, "name": name, "force": True}), 400, name)
        for name in ("link.toml", "folder.toml"):
            self.assertEqual(self.status("POST", "/api/save", {"document": made, "name": name, "force": True}), 422, name)
        self.assertEqual(secret.read_text(), "P = 1\n")
        self.assertEqual(self.status("POST", "/api/save", {"document": made, "name": "drum 2.toml"}), 200)
        self.assertEqual(self.status("POST", "/api/save", {"document": made, "name": "v101.toml"}), 409)

    def test_a_range_is_ignored(self):
        ranges = "bytes=" + ",".join(["0-"] * 1000)
        before = self.server.peak()
        path = f"/api/download/csv?document={self.server.document}"
        status, headers, body = self.server.ask("GET", path, headers={**self.server.doors(), "Range": ranges})
        self.assertEqual(status, 200)
        self.assertEqual(len(body), int(headers["Content-Length"]))
        self.assertEqual(body, self.server.ask("GET", path)[2])
        self.assertLess(self.server.peak() - before, 100 * MEGABYTE)

    def test_a_taken_port_is_refused_by_name(self):
        run = subprocess.run([PROGRAM, "serve", "--no-browser", "--port", str(self.server.port)],
                             capture_output=True, text=True, timeout=60, cwd=self.server.files)
        self.assertEqual(run.returncode, 2)
        self.assertIn(f"port {self.server.port} is taken", run.stderr)
        self.assertEqual(run.stdout, "")
        run = subprocess.run([PROGRAM, "serve", "--no-browser", "none.toml"], capture_output=True, text=True, timeout=60)
        self.assertEqual(run.returncode, 2)
        self.assertIn("none.toml", run.stderr)


class Masses(unittest.TestCase):
    """What would fill the memory or keep the server from others."""

    def setUp(self):
        self.server = Server()

    def tearDown(self):
        self.assertIsNone(self.server.process.poll())
        self.assertLess(self.server.peak(), 100 * MEGABYTE)
        self.assertEqual(self.server.ask("GET", "/api/files")[0], 200)
        self.server.close()

    def test_a_header_of_300_megabytes(self):
        for head in (b"GET /", self.server.head() + b"X-Long: ", self.server.head()):
            piece = (b"X: y\r\n" if head.endswith(b"\r\n") else b"x") * 60000
            said, sent = send_until_closed(self.server.port, head, piece, 300 * MEGABYTE)
            self.assertLess(sent, 16 * MEGABYTE)  # what the system keeps for the two sides
            self.assertNotIn(b" 200 ", said[:40])

    def test_chunks_without_an_end(self):
        piece = b"10000\r\n" + b" " * 0x10000 + b"\r\n"
        for line in ("POST /api/edit", "POST /enter", "POST /", "GET /api/files", "GET /"):
            head = self.server.head(line + " HTTP/1.1", "Transfer-Encoding: chunked") + b"\r\n"
            said, sent = send_until_closed(self.server.port, head, piece, 300 * MEGABYTE)
            self.assertLess(sent, 16 * MEGABYTE, line)
            self.assertNotIn(b" 200 ", said[:40], line)

    def test_a_body_beyond_the_limit(self):
        for length in (17 * MEGABYTE, 1 << 40, 10 ** 30):
            said, sent = send_until_closed(self.server.port,
                                           self.server.head("POST /api/edit HTTP/1.1", f"Content-Length: {length}") + b"\r\n",
                                           b" " * MEGABYTE, 300 * MEGABYTE)
            self.assertLess(sent, 17 * MEGABYTE)
            self.assertNotIn(b" 200 ", said[:40])
        status, _, _ = self.server.ask("POST", "/api/edit", b" " * (15 * MEGABYTE))
        self.assertEqual(status, 400)

    def test_32_idle_connections_keep_nobody_waiting(self):
        with contextlib.ExitStack() as stack:
            for i in range(32):
                idle = stack.enter_context(socket.create_connection(("127.0.0.1", self.server.port)))
                if i % 3 == 1:
                    idle.sendall(b"GET / HTTP/1.1\r\nHost: ")
                if i % 3 == 2:
                    idle.sendall(self.server.head("POST /api/edit HTTP/1.1", "Content-Length: 100") + b"\r\n{")
            times = []
            for i in range(20):
                begun = time.perf_counter()
                status, _, _ = self.server.ask("GET", "/api/files")
                times.append(time.perf_counter() - begun)
                self.assertEqual(status, 200)
            self.assertLess(sorted(times)[10], 0.1)

    def test_a_thousand_requests_beside_each_other(self):
        status, _, body = self.server.ask("GET", "/api/fields")
        self.assertEqual(status, 200)
        with contextlib.ExitStack() as stack:
            all_of_them = [stack.enter_context(socket.create_connection(("127.0.0.1", self.server.port)))
                           for _ in range(200)]
            for each in all_of_them:
                each.settimeout(60)
                each.sendall(self.server.head("GET /api/fields HTTP/1.1", "Connection: close") + b"\r\n")
            for each in all_of_them:
                said = b""
                while block := each.recv(65536):
                    said += block
                self.assertTrue(said.startswith(b"HTTP/1.1 200"), said[:60])
                self.assertTrue(said.endswith(body))


class Files(unittest.TestCase):
    def setUp(self):
        self.server = Server()
        self.file = self.server.files / "v101.toml"

    def tearDown(self):
        self.server.close()

    def edit(self, *edits, **more):
        return self.server.json("POST", "/api/edit", {"document": self.server.document, "edits": list(edits), **more})

    def test_a_file_keeps_every_other_byte(self):
        before = self.file.read_bytes().replace(b"\n", b"\r\n")
        self.file.write_bytes(b"\xef\xbb\xbf" + before)
        status, state = self.server.json("POST", "/api/reload", {"document": self.server.document})
        self.assertEqual((status, state["saved"], state["on_disk"]), (200, True, "same"))
        status, answer = self.edit({"path": "vessel.P", "typed": "160,5"},
                                   {"path": "flange[0].standard.class", "typed": "600"},
                                   {"path": "flange[0].Go", "typed": "8.30"}, sequence=7, component="flange[0]")
        self.assertEqual(status, 200, answer)
        self.assertEqual(answer["sequence"], 7)
        self.assertEqual(answer["result"]["component"]["path"], "flange[0]")
        self.assertFalse(answer["state"]["saved"])
        self.assertEqual(self.server.json("POST", "/api/save", {"document": self.server.document})[0], 200)
        expected = before.replace(b"P = 150 ", b"P = 160.5 ").replace(b"class = 300, size = 6 }",
                                                                       b"class = 600, size = 6 }")
        expected = expected.replace(b"Go = 8.25", b"Go = 8.30")
        self.assertEqual(self.file.read_bytes(), b"\xef\xbb\xbf" + expected)
        for _ in range(2):
            status, answer = self.server.json("POST", "/api/undo", {"document": self.server.document})
        self.assertEqual(answer["state"]["text"].encode(), before.replace(b"\r\n", b"\n"))

    def test_undo_and_redo(self):
        text = self.file.read_text()
        self.edit({"path": "vessel.P", "typed": "160"})
        changed = self.edit({"path": "vessel.P", "typed": "170"})[1]["state"]["text"]
        ask = {"document": self.server.document, "sequence": 3}
        self.assertIn("P = 160 ", self.server.json("POST", "/api/undo", ask)[1]["state"]["text"])
        answer = self.server.json("POST", "/api/undo", ask)[1]
        self.assertEqual((answer["state"]["text"], answer["state"]["undo"], answer["state"]["saved"]), (text, False, True))
        self.server.json("POST", "/api/redo", ask)
        answer = self.server.json("POST", "/api/redo", ask)[1]
        self.assertEqual((answer["state"]["text"], answer["state"]["redo"], answer["sequence"]), (changed, False, 3))

    def test_a_change_on_disk_is_noticed_and_not_overwritten(self):
        document = {"document": self.server.document}
        path = f"/api/state?document={self.server.document}"
        self.edit({"path": "vessel.P", "typed": "160"})
        os.utime(self.file, (1, 1))  # touched alone
        self.assertEqual(self.server.json("GET", path)[1]["on_disk"], "same")
        other = self.file.read_text().replace("T = 300", "T = 301")
        self.file.write_text(other)
        self.assertEqual(self.server.json("GET", path)[1]["on_disk"], "changed")
        status, answer = self.server.json("POST", "/api/save", document)
        self.assertEqual((status, answer["conflict"]), (409, "changed"))
        self.assertEqual(self.file.read_text(), other)
        self.assertEqual(self.server.json("POST", "/api/save", {**document, "force": True})[0], 200)
        self.assertIn("P = 160 ", self.file.read_text())
        self.file.unlink()
        self.assertEqual(self.server.json("GET", path)[1]["on_disk"], "missing")
        self.assertEqual(self.server.json("POST", "/api/save", document)[0], 200)
        self.assertTrue(self.file.exists())

    def test_an_edit_of_an_older_text_is_refused(self):
        status, answer = self.edit({"path": "vessel.P", "typed": "160"}, version=1)
        self.assertEqual(status, 200)
        status, answer = self.edit({"path": "vessel.P", "typed": "170"}, version=1)
        self.assertEqual((status, answer["conflict"], answer["state"]["version"]), (409, "version", 2))
        self.assertIn("P = 160 ", answer["state"]["text"])

    def test_faults_name_their_fields(self):
        status, answer = self.edit({"path": "flange[0].gasket.type", "typed": "spiral"})
        self.assertEqual((status, answer["result"]["verdict"]), (200, "faulty"))
        self.assertIn("flange[0].gasket.type", [fault["path"] for fault in answer["result"]["faults"]])
        status, answer = self.edit({"path": "flange[0]", "typed": "5"})
        self.assertEqual((status, answer["path"]), (400, "flange[0]"))

    def test_what_changed(self):
        self.edit({"path": "vessel.P", "typed": "600"})
        status, answer = self.server.json("GET", f"/api/compare?document={self.server.document}")
        self.assertEqual((status, answer["same"]), (200, False))
        self.assertIn("flange[0].inputs.P", [change["path"] for change in answer["inputs"]])
        self.assertIn("worse", [change["turn"] for change in answer["verdicts"]])
        signs = [line["sign"] for line in answer["lines"]]
        self.assertEqual((signs.count("-"), signs.count("+")), (1, 1))

    def test_downloads(self):
        for form, begin in (("html", b"<!DOCTYPE html>"), ("json", b'{"tarvane":1'), ("csv", b"table,"),
                            ("toml", b"# A knock-out")):
            status, headers, body = self.server.ask("GET", f"/api/download/{form}?document={self.server.document}")
            self.assertEqual(status, 200)
            self.assertTrue(body.startswith(begin), body[:40])
            self.assertIn(f'filename="v101.{form}"', headers["Content-Disposition"])
        self.edit({"path": "vessel.P", "typed": "ten"})
        self.assertEqual(self.server.ask("GET", f"/api/download/html?document={self.server.document}")[0], 422)

    @unittest.skipUnless(shutil.which("weasyprint"), "there is no weasyprint")
    def test_a_pdf_keeps_nobody_waiting(self):
        path = f"/api/download/pdf?document={self.server.document}"
        with socket.create_connection(("127.0.0.1", self.server.port), timeout=300) as waits:
            waits.sendall(self.server.head(f"GET {path} HTTP/1.1", "Connection: close") + b"\r\n")
            time.sleep(0.5)
            for _ in range(5):
                begun = time.perf_counter()
                self.assertEqual(self.server.ask("GET", "/api/files")[0], 200)
                self.assertLess(time.perf_counter() - begun, 2)
            said = b""
            while block := waits.recv(65536):
                said += block
        self.assertTrue(said.startswith(b"HTTP/1.1 200"), said[:60])
        self.assertIn(b"\r\n\r\n%PDF", said)


class Sources(unittest.TestCase):
    def test_one_folder_sees_the_http_library(self):
        root = EXAMPLES.parent
        seen = {file.relative_to(root).parent.as_posix()
                for folder in ("app", "vessel", "engine", "data/build") for file in (root / folder).rglob("*")
                if file.suffix in (".h", ".cpp") and "microhttpd.h" in file.read_text()}
        self.assertEqual(seen, {"app/serve"})

    def test_the_page_asks_nobody_else(self):
        for file in (EXAMPLES.parent / "app" / "serve" / "assets").iterdir():
            text = file.read_text()
            others = [url for url in re.findall(r"(?:https?:)?//[A-Za-z0-9][A-Za-z0-9.-]*\.[a-z]{2,}", text)
                      if "www.w3.org" not in url]  # names of XML, which nobody asks for
            self.assertEqual(others, [], file.name)


class Ends(unittest.TestCase):
    def test_signals_end_it_cleanly(self):
        for how in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            server = Server()
            with socket.create_connection(("127.0.0.1", server.port)):
                begun = time.perf_counter()
                status, said = server.end(how)
                self.assertEqual((status, said), (0, ""))
                self.assertLess(time.perf_counter() - begun, 5)
            self.assertFalse(server.link.exists())
            self.assertEqual(list(server.runtime.iterdir()), [])
            server.close()

    @unittest.skipUnless(shutil.which("weasyprint"), "there is no weasyprint")
    def test_it_ends_while_a_pdf_is_made(self):
        server = Server()
        with socket.create_connection(("127.0.0.1", server.port), timeout=60) as waits:
            waits.sendall(server.head(f"GET /api/download/pdf?document={server.document} HTTP/1.1") + b"\r\n")
            deadline = time.monotonic() + 60
            while not server.children() and time.monotonic() < deadline:
                time.sleep(0.05)
            self.assertTrue(server.children())
            begun = time.perf_counter()
            self.assertEqual(server.end(), (0, ""))
            self.assertLess(time.perf_counter() - begun, 5)
        self.assertFalse(server.link.exists())
        server.close()

    def test_a_signal_that_was_ignored_stays_so(self):
        server = Server(ignores=signal.SIGHUP)
        server.process.send_signal(signal.SIGHUP)
        self.assertEqual(server.ask("GET", "/api/files")[0], 200)
        self.assertEqual(server.end()[0], 0)
        server.close()

    def test_it_names_what_was_not_saved(self):
        server = Server()
        server.json("POST", "/api/edit", {"document": server.document, "edits": [{"path": "vessel.P", "typed": "1"}]})
        status, said = server.end()
        self.assertEqual(status, 0)
        self.assertIn("v101.toml: changes were not saved", said)
        server.close()

    def test_an_open_runtime_folder_is_not_used(self):
        folder = tempfile.mkdtemp(prefix="tarvane-serve-open-")
        os.chmod(folder, 0o777)
        server = Server(environment={"XDG_RUNTIME_DIR": folder})
        self.assertNotEqual(server.link.parent, Path(folder))
        self.assertEqual(stat.S_IMODE(server.link.parent.stat().st_mode), 0o700)
        place = server.link.parent
        server.end()
        self.assertFalse(place.exists())
        server.close()
        os.rmdir(folder)


if __name__ == "__main__":
    resource.setrlimit(resource.RLIMIT_NOFILE, (1024, resource.getrlimit(resource.RLIMIT_NOFILE)[1]))
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])

#!/usr/bin/python3
"""Lets the mail client talk to a real SMTP server and to sockets that misbehave.

usage: real_server_test.py CLIENT

CLIENT is the program send_mail; a Windows one (.exe) is run by the program that $WINE names.
"""

import contextlib
import email
import email.policy
import logging
import os
import re
import socket
import struct
import subprocess
import sys
import tempfile
import threading
import unittest

from aiosmtpd.controller import Controller
from aiosmtpd.smtp import AuthResult

CLIENT = ""
LIMIT = 120  # seconds that a client may take before the test gives up
EVERY_BYTE = bytes(range(256)) * 4096


class Mailbox:
    """What the SMTP server has received."""

    def __init__(self):
        self.envelopes = []

    async def handle_HELO(self, server, session, envelope, hostname):
        session.host_name = hostname
        session.extended_smtp = True  # the server offers a login only to clients that it takes for modern ones
        return "250-first\r\n250-second\r\n250 last"

    async def handle_DATA(self, server, session, envelope):
        self.envelopes.append(envelope)
        return "250 queued"


def authenticate(server, session, envelope, mechanism, data):
    right = mechanism == "LOGIN" and (data.login, data.password) == (b"user", b"pass word")
    return AuthResult(success=right, handled=False)


class SmtpServer(Controller):
    """A real server on a free port of this machine, which takes mail after a login only."""

    def __init__(self):
        with socket.create_server(("127.0.0.1", 0)) as free:
            port = free.getsockname()[1]
        super().__init__(Mailbox(), hostname="127.0.0.1", port=port, auth_require_tls=False, auth_required=True,
                         authenticator=authenticate)

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, *_):
        self.stop()


@contextlib.contextmanager
def scripted_server(talk):
    """A socket that accepts one connection and hands it to talk(); gives its port."""
    def serve():
        with contextlib.suppress(OSError):
            connection, _ = listener.accept()
            with connection:
                connection.settimeout(LIMIT)
                talk(connection)

    with socket.create_server(("127.0.0.1", 0)) as listener:
        listener.settimeout(LIMIT)
        thread = threading.Thread(target=serve)
        thread.start()
        yield listener.getsockname()[1]
        thread.join()


class MailTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="five-in-a-row.")
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def path(self, *names):
        """A path as the client writes it."""
        path = os.path.join(self.folder, *names)
        return "Z:" + path.replace("/", "\\") if CLIENT.endswith(".exe") else path

    def write(self, name, content):
        with open(os.path.join(self.folder, name), "wb") as file:
            file.write(content)
        return self.path(name)

    def send(self, port, **settings):
        """Runs the client; gives what it printed as {name: [number, ...]}, and the debug log."""
        entries = {"serverName": "127.0.0.1", "ServerPort": port, "UserName": "user", "Password": "pass word",
                   "MailFrom": "me@example.org", "MailTo": "you@example.org", "subject": "Hello",
                   "Message": "<b>one</b>\r\ntwo", "folder": self.path("").rstrip("\\/") + "\\", "debugScript": "on",
                   "speed": 1} | settings
        text = "".join(f"{name}={value}\0" for name, value in entries.items())
        command = ([os.environ["WINE"]] if CLIENT.endswith(".exe") else []) + [CLIENT, self.write("settings", text.encode())]
        client = subprocess.run(command, capture_output=True, text=True, timeout=LIMIT, check=False)
        self.assertEqual(client.returncode, 0, client.stderr)
        printed = {}
        for line in client.stdout.splitlines():
            name, number = line.split()
            printed.setdefault(name, []).append(float(number))
        log = ""
        with contextlib.suppress(FileNotFoundError), open(os.path.join(self.folder, "rmail.debug.log"), "rb") as file:
            log = file.read().decode("latin-1")
        return printed, re.sub(r"(\S{76}\r\n)+", "...", log)  # short enough to be shown by a failure

    def test_messages_arrive_whole(self):
        everything = self.write("every byte.bin", EVERY_BYTE)
        small = self.write("small.txt", b"\r\n.\r\n")
        with SmtpServer() as server:
            for count, attachments in ((1, ""), (2, everything), (3, f"{everything};{self.path('none')};{small}")):
                with self.subTest(recipients=count):
                    to = [f"you{number}@example.org" for number in range(count)]
                    bcc = ["one@example.net", "two@example.net"]
                    _, log = self.send(server.port, MailTo=";".join(to), MailBcc=";".join(bcc), ReplyTo="re@example.org",
                                       subject="Caf\u00e9 \u20ac", Attachments=attachments,
                                       serverName="localhost" if count == 2 else "127.0.0.1")
                    self.assertNotIn("TIMEOUT", log)
                    envelope = server.handler.envelopes.pop()
                    self.assertEqual((envelope.mail_from, envelope.rcpt_tos), ("me@example.org", to + bcc))
                    message = email.message_from_bytes(envelope.content, policy=email.policy.compat32)
                    self.assertEqual(
                        (message["From"], message["To"], message["Reply-To"], message["Bcc"]),
                        ("me@example.org", ";".join(to), "re@example.org", "<one@example.net>;<two@example.net>;"))
                    self.assertIn(b"\r\nSubject:Caf\xe9 \x80\r\n", b"\r\n" + envelope.content)
                    parts = list(message.walk())[1:] if attachments else [message]
                    self.assertEqual(parts[0].get_content_type(), "text/html")
                    self.assertEqual(parts[0].get_payload().rstrip("\r\n"), "<b>one</b><br>\r\ntwo")
                    files = {part.get_filename(): part.get_payload(decode=True) for part in parts[1:]}
                    self.assertEqual(list(files), [os.path.basename(path.replace("\\", "/"))
                                                   for path in attachments.split(";") if path])
                    for name, content in files.items():
                        expected = {"every byte.bin": EVERY_BYTE, "none": b"", "small.txt": b"\r\n.\r\n"}[name]
                        self.assertTrue(content == expected, name)

    def test_wrong_password(self):
        with SmtpServer() as server:
            _, log = self.send(server.port, Password="wrong", speed=20)
            self.assertIn("waitForAnswer:235 TIMEOUT", log)
            self.assertEqual(server.handler.envelopes, [])

    def test_many_messages_leave_nothing_behind(self):
        with SmtpServer() as server:
            printed, _ = self.send(server.port, times=200, debugScript="off", serverName="localhost")
            self.assertEqual(len(server.handler.envelopes), 200)
        # What leaks grows in both halves; what the system takes once, at any time, is no leak.
        for name, tolerance in (("handles", 1), ("objects", 1), ("memory", 256 * 1024)):
            early, middle, late = printed[name]
            self.assertLessEqual(min(middle - early, late - middle), tolerance, printed)

    def test_servers_that_misbehave(self):
        def silent(connection):
            while connection.recv(65536):
                pass

        def reset(connection):
            connection.sendall(b"220 a\r\n")
            connection.recv(100)
            connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))

        def close_in_message(connection):
            connection.sendall(b"220 a\r\n")
            while b"DATA" not in (line := connection.recv(100)):
                connection.sendall(b"334 a\r\n235 a\r\n250 a\r\n")
            connection.sendall(b"354 a\r\n")
            connection.recv(10000)

        def unread(connection):
            connection.sendall(b"220 a\r\n")
            done.wait(LIMIT)

        large = self.write("large", EVERY_BYTE * 8)  # more than the network takes at once
        reset_error = "" if CLIENT.endswith(".exe") else "winsock.error:"  # Wine tells of a plain end
        cases = (
            (silent, "Connected\r\nwaitForAnswer:220 TIMEOUT\r\nwinsock.send:HELO 127.0.0.1\r\n", "221 TIMEOUT\r\n"),
            (reset, "waitForAnswer:220 OK\r\nwinsock.send:HELO 127.0.0.1\r\n\r\n" + reset_error, "221 TIMEOUT\r\n"),
            (close_in_message, "waitForAnswer:354 OK\r\n", "waitForAnswer:221 TIMEOUT\r\n"),
            (unread, "waitForAnswer:354 TIMEOUT\r\n", "waitForAnswer:221 TIMEOUT\r\n"))
        for talk, *expected in cases:
            with self.subTest(server=talk.__name__), scripted_server(talk) as port:
                done = threading.Event()
                printed, log = self.send(port, Attachments=large if talk is unread else "", speed=50)
                done.set()
                for text in expected:
                    self.assertIn(text, log)
                # Each wait sleeps until something happens: the commands, and the little that the server says.
                self.assertLess(printed["waits"][0], 60)
                os.remove(os.path.join(self.folder, "rmail.debug.log"))

    def test_no_server(self):
        with socket.create_server(("127.0.0.1", 0)) as free:
            unused = free.getsockname()[1]
        for name, port in (("127.0.0.1", unused), ("127.0.0.1", 0), ("no-such-host.invalid", 25), ("", 25)):
            with self.subTest(name=name, port=port):
                _, log = self.send(port, serverName=name, speed=10)
                self.assertRegex(log, r"winsock\.error:\w[^\r]+\r\nwaitForAnswer:220 TIMEOUT\r\n$")
                os.remove(os.path.join(self.folder, "rmail.debug.log"))


if __name__ == "__main__":
    CLIENT = sys.argv.pop(1)
    logging.disable()
    unittest.main(warnings="ignore")

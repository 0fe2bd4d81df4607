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

CLIENT = ""
LIMIT = 120  # seconds that a client may take before the test gives up
EVERY_BYTE = bytes(range(256)) * 4096


class Mailbox:
    """What the SMTP server has received, and what it says."""

    def __init__(self):
        self.envelopes = []

    async def handle_DATA(self, server, session, envelope):
        self.envelopes.append(envelope)
        return "250-first\r\n250 last"


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as free:
        return free.getsockname()[1]


@contextlib.contextmanager
def smtp_server():
    """A real server on this machine; gives its port and envelopes."""
    server = Controller(Mailbox(), hostname="127.0.0.1", port=free_port())
    server.start()
    try:
        yield server.port, server.handler.envelopes
    finally:
        server.stop()


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

    def send(self, port, host="127.0.0.1", speed=1, times=1, attachments=""):
        """Runs the client; gives what it printed as {name: [number, ...]}, and the debug log."""
        self.write("rmail.debug.log", b"")
        command = [CLIENT, host, str(port), self.path(""), str(speed), str(times), attachments]
        if CLIENT.endswith(".exe"):
            command.insert(0, os.environ["WINE"])
        client = subprocess.run(command, capture_output=True, text=True, timeout=LIMIT, check=False)
        self.assertEqual(client.returncode, 0, client.stderr)
        printed = {}
        for line in client.stdout.splitlines():
            name, number = line.split()
            printed.setdefault(name, []).append(float(number))
        with open(os.path.join(self.folder, "rmail.debug.log"), encoding="latin-1", newline="") as file:
            log = file.read()
        return printed, re.sub(r"(\S{76}\r\n)+", "...", log)  # short enough to be shown by a failure

    def test_message_arrives_whole(self):
        contents = {"every byte.bin": EVERY_BYTE, "small.txt": b"\r\n.\r\n"}
        attachments = ";".join(self.write(name, content) for name, content in contents.items())
        with smtp_server() as (port, envelopes):
            _, log = self.send(port, attachments=attachments)
        self.assertNotIn("TIMEOUT", log)
        envelope = envelopes.pop()
        self.assertEqual(envelope.rcpt_tos, ["you@example.org", "her@example.org", "one@example.net", "two@example.net"])
        message = email.message_from_bytes(envelope.content, policy=email.policy.compat32)
        self.assertEqual([envelope.mail_from, *(message[name] for name in ("From", "To", "Reply-To", "Bcc"))], [
            "me@example.org", "me@example.org", "you@example.org;her@example.org", "re@example.org",
            "<one@example.net>;<two@example.net>;"])
        self.assertIn(b"\r\nSubject:Caf\xe9 \x80\r\n", b"\r\n" + envelope.content)
        text, *files = message.get_payload()
        self.assertEqual(text.get_content_type(), "text/html")
        self.assertEqual(text.get_payload().rstrip("\r\n"), "<b>one</b><br>\r\ntwo")
        self.assertEqual([part.get_filename() for part in files], list(contents))
        for part in files:
            self.assertTrue(part.get_payload(decode=True) == contents[part.get_filename()], part.get_filename())

    def test_many_messages_leave_nothing_behind(self):
        with smtp_server() as (port, envelopes):
            printed, _ = self.send(port, host="localhost", times=200)
        self.assertEqual(len(envelopes), 200)
        for envelope in envelopes:
            self.assertTrue(envelope.content.endswith(b"\r\n\r\n<b>one</b><br>\r\ntwo\r\n"))
        for name, tolerance in (("handles", 2), ("objects", 2), ("memory", 512 * 1024)):
            early, late = printed[name]
            self.assertLessEqual(late, early + tolerance, name)

    def test_servers_that_misbehave(self):
        def silent(connection):
            while connection.recv(65536):
                pass

        def ending(connection):
            connection.sendall(b"220 a\r\n")
            connection.recv(100)

        def reset(connection):
            ending(connection)
            connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))

        def unread(connection):
            connection.sendall(b"220 a\r\n")
            done.wait(LIMIT)

        large = self.write("large", EVERY_BYTE * 8)  # more than the network takes at once
        reset_error = "" if CLIENT.endswith(".exe") else "winsock.error:"  # Wine tells of a plain end
        greeted = "waitForAnswer:220 OK\r\nwinsock.send:HELO 127.0.0.1\r\n\r\n"
        cases = (
            (silent, "Connected\r\nwaitForAnswer:220 TIMEOUT\r\nwinsock.send:HELO 127.0.0.1\r\n"),
            (ending, greeted + "waitForAnswer:250 TIMEOUT\r\n"),
            (reset, greeted + reset_error),
            (unread, "waitForAnswer:354 TIMEOUT\r\n"))
        for talk, expected in cases:
            with self.subTest(server=talk.__name__), scripted_server(talk) as port:
                done = threading.Event()
                printed, log = self.send(port, attachments=large if talk is unread else "", speed=50)
                done.set()
                self.assertIn(expected, log)
                self.assertTrue(log.endswith("waitForAnswer:221 TIMEOUT\r\n"), log)
                # Each wait sleeps until something happens: the commands, and the little that the server says.
                self.assertLess(printed["waits"][0], 60)

    def test_no_server(self):
        for host, port in (("127.0.0.1", free_port()), ("127.0.0.1", 0), ("no-such-host.invalid", 25), ("", 25)):
            with self.subTest(host=host, port=port):
                _, log = self.send(port, host, speed=10)
                self.assertRegex(log, r"winsock\.error:\w[^\r]+\r\nwaitForAnswer:220 TIMEOUT\r\n$")


if __name__ == "__main__":
    CLIENT = sys.argv.pop(1)
    logging.disable()
    unittest.main(warnings="ignore")

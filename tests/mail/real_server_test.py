#!/usr/bin/python3
"""Lets the mail client, a Windows program, talk to a real SMTP server, which also misbehaves.

usage: real_server_test.py SEND_MAIL.EXE, with the program that runs it in $WINE
"""

import asyncio
import email
import faulthandler
import logging
import os
import pathlib
import re
import socket
import subprocess
import sys
import tempfile
import unittest

from aiosmtpd.controller import Controller
from aiosmtpd.smtp import SMTP, AuthResult

CLIENT = os.path.abspath(sys.argv.pop(1))
LIMIT = 120  # seconds that a test may take
EVERY_BYTE = bytes(range(256)) * 32768  # in base64 several MB more than the network takes at once


class LateReader(SMTP):
    """Reads a message only when the client has sent all of it and waits."""

    smtp_HELO = SMTP.smtp_EHLO  # or it would offer no login

    async def push(self, status):
        await super().push(status)
        if str(status).startswith("354"):
            while not self.event_handler.log.read_bytes().endswith(b"winsock.send:.\r\n\r\n"):
                await asyncio.sleep(0.01)
            if self.event_handler.fault == "reset":
                self.transport.abort()


class MailTest(unittest.TestCase):
    def setUp(self):
        faulthandler.dump_traceback_later(LIMIT, exit=True)
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="five-in-a-row.")))
        self.log = self.folder / "rmail.debug.log"
        self.mails = []
        self.fault = None
        with socket.create_server(("127.0.0.1", 0)) as unused:
            self.port = unused.getsockname()[1]
        server = Controller(self, "127.0.0.1", self.port, auth_required=True, auth_require_tls=False,
                            authenticator=lambda *call: AuthResult(success=call[-1] == (b"user", b"pass word")))
        server.factory = lambda: LateReader(self, **server.SMTP_kwargs)
        server.start()
        self.addCleanup(server.stop)
        # Nobody listens at the first address of this name.
        (self.folder / "hosts").write_bytes(b"127.0.0.2 mail.example\n127.0.0.1 mail.example\n")
        hosts = {"LD_PRELOAD": "libnss_wrapper.so", "NSS_WRAPPER_HOSTS": str(self.folder / "hosts")}
        self.client = self.enterContext(
            subprocess.Popen([os.environ["WINE"], CLIENT], cwd=self.folder, env=os.environ | hosts,
                             stdin=subprocess.PIPE, stdout=subprocess.PIPE))

    async def handle_EHLO(self, server, session, _envelope, hostname, responses):
        session.host_name = hostname
        if self.fault == "end":
            server.transport.close()
        return responses

    async def handle_DATA(self, _server, _session, envelope):
        self.mails.append(envelope)
        return "451 no" if self.fault == "refusal" else "250 queued"

    async def handle_QUIT(self, _server, _session, _envelope):
        return ("123456\r\n" * 8000000 if self.fault == "flood" else "") + "221 bye"

    def send(self, patience=60, exit_code=0, attachments="", name="mail.example", port=None, to="you@example", bcc=""):
        """Returns what the client logged last."""
        self.log.write_bytes(b"")
        texts = (f"{patience} {exit_code}", name, str(port or self.port), "me@example", to, bcc, "user", "pass word",
                 "<b>one</b>\r\ntwo", attachments)
        self.client.stdin.write("".join(text + "\0" for text in texts).encode())
        self.client.stdin.flush()
        self.assertLess(int(self.client.stdout.readline()), 2000)  # a wait sleeps until something happens
        return self.log.read_text(encoding="latin-1")[-1000:]

    def test_messages_arrive_whole_though_the_client_is_to_end(self):
        files = {"every byte": EVERY_BYTE, "end": b"\r\n.\r\n"}
        for name, content in files.items():
            (self.folder / name).write_bytes(content)
        os.mkfifo(self.folder / "pipe")
        self.addCleanup(os.close, os.open(self.folder / "pipe", os.O_RDWR))  # who reads it waits
        names = [*files, "none", "pipe"]
        self.send(to="a@example;b@example", bcc="c@example", exit_code=7, attachments=";".join(names))
        envelope = self.mails.pop()
        self.assertEqual(envelope.rcpt_tos, ["a@example", "b@example", "c@example"])
        text, *attachments = email.message_from_bytes(envelope.content).get_payload()
        self.assertEqual(text.get_payload().strip(), "<b>one</b><br>\r\ntwo")
        self.assertEqual([attachment.get_filename() for attachment in attachments], names)
        for name, attachment in zip(names, attachments):
            self.assertTrue(attachment.get_payload(decode=True) == files.get(name, b""), name)
        self.client.stdin.close()
        self.assertEqual(self.client.wait(LIMIT), 7)

    def test_many_messages_and_a_server_that_misbehaves_leave_nothing_behind(self):
        (self.folder / "large").write_bytes(EVERY_BYTE)
        folder = f"/proc/{self.client.pid}"
        for _ in range(20):
            self.send()
        files = os.listdir(folder + "/fd")
        for _ in range(80):
            self.assertRegex(self.send(), "221 OK\n$")
        for self.fault, patience, log_end in (
                ("end", 0.5, "250 TIMEOUT.*221 TIMEOUT"), ("flood", 60, "221 OK"),
                ("reset", 0.5, r"winsock\.error:.*TIMEOUT"),
                ("refusal", 0.5, "250 TIMEOUT\nwinsock.send:QUIT\n\nwaitForAnswer:221 OK")):
            with self.subTest(self.fault):
                self.assertRegex(self.send(patience, attachments="large"), f"(?s){log_end}\n$")
        self.assertEqual(len(os.listdir(folder + "/fd")), len(files))
        status = pathlib.Path(folder, "status").read_text(encoding="ascii")
        self.assertLess(int(re.search(r"VmHWM:\s+(\d+)", status)[1]), 200000)  # kB: nothing piles up

    def test_no_server(self):
        for name, port in ("127.0.0.1", 1), ("127.0.0.1", f"{self.port}a"), ("x" * 64, self.port), ("", self.port):
            self.assertRegex(self.send(patience=0.5, name=name, port=port),
                             r"winsock\.error:\w.+\nwaitForAnswer:220 TIMEOUT\n$")


if __name__ == "__main__":
    logging.disable()
    unittest.main()

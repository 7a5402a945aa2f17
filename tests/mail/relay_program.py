"""relay_program.py ADDRESS REPLIES: a mail relay on port 25 that records what it is sent.

REPLIES is a JSON object of replies by the first word of a command, "." being the end of a message, and
"greeting". The reply null is silence; of a list the replies are given in turn.
Prints "listening", and for each connection that ended a line of JSON with its commands, how many segments had come with
each, its message, each byte a character, when that was accepted, and the seconds that it lasted. Ends when its standard
input does, and prints the same then for each that is still open.
"""

import itertools
import json
import socket
import socketserver
import struct
import sys
import threading
import time

ADDRESS = sys.argv[1]
REPLIES = {word: itertools.cycle(replies if isinstance(replies, list) else [replies])
           for word, replies in json.loads(sys.argv[2]).items()}
PRINTING = threading.Lock()
OPEN = set()
# Where the kernel's tcp_info has the number of segments that came with data in them.
DATA_SEGMENTS_IN = 152


class Connection(socketserver.StreamRequestHandler):
    def setup(self) -> None:
        super().setup()
        self.started = time.monotonic()
        self.commands, self.segments_of_commands, self.content, self.accepted = [], [], b"", None
        with PRINTING:
            OPEN.add(self)

    def finish(self) -> None:
        with PRINTING:
            if self in OPEN:
                self.tell()
        super().finish()

    def tell(self) -> None:
        OPEN.discard(self)
        print(json.dumps({"commands": self.commands, "segments": self.segments_of_commands,
                          "content": self.content.decode("latin-1"), "accepted": self.accepted,
                          "seconds": time.monotonic() - self.started}),
              flush=True)

    def reply(self, word: str, otherwise: str) -> None:
        reply = next(REPLIES[word]) if word in REPLIES else otherwise
        if reply is not None:
            self.wfile.write((reply + "\r\n").encode())

    def handle(self) -> None:
        self.reply("greeting", "220 relay.example.org ready")
        while line := self.next_line():
            command = line.rstrip(b"\r\n").decode("latin-1")
            self.commands.append(command)
            self.segments_of_commands.append(self.segments())
            word = command.partition(" ")[0]
            if word == "DATA":
                self.reply(word, "354 go ahead")
                if message := self.read_message():
                    self.content += message
                    self.accepted = time.monotonic()
                self.reply(".", "250 queued")
            else:
                self.reply(word, "221 bye" if word == "QUIT" else "250 ok")

    def next_line(self) -> bytes:
        # Each acknowledgement is put off, as relays do that are about to answer.
        self.connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_QUICKACK, 0)
        return self.rfile.readline()

    def segments(self) -> int:
        """Those that have come so far with data in them."""
        told = self.connection.getsockopt(socket.IPPROTO_TCP, socket.TCP_INFO, 256)
        return struct.unpack_from("I", told, DATA_SEGMENTS_IN)[0]

    def read_message(self) -> bytes:
        """Nothing of one whose end does not come, as relays drop it."""
        content = b""
        while not content.endswith(b"\r\n.\r\n"):
            line = self.rfile.readline()
            if not line:
                return b""
            content += line
        return content.removesuffix(b"\r\n.\r\n")


class Relay(socketserver.ThreadingTCPServer):
    allow_reuse_address = True
    daemon_threads = True
    request_queue_size = 128  # all that come at once


with Relay((ADDRESS, 25), Connection) as relay:
    threading.Thread(target=relay.serve_forever, daemon=True).start()
    print("listening", flush=True)
    sys.stdin.read()
    with PRINTING:
        for connection in list(OPEN):
            connection.tell()

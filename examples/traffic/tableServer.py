#!/usr/bin/python3
"""A small database server: tableServer.py PORT. A request is an SQL statement, and the answer its rows as JSON.
Each has a four-byte length prefix."""
import json
import socketserver
import sqlite3
import struct
import sys


class Conversation(socketserver.StreamRequestHandler):
    def handle(self):
        tables = sqlite3.connect(":memory:")
        tables.execute("create table entries (name text, amount integer)")
        while True:
            head = self.rfile.read(4)
            if len(head) < 4:
                return
            statement = self.rfile.read(struct.unpack("!I", head)[0]).decode()
            answer = json.dumps(tables.execute(statement).fetchall()).encode()
            self.wfile.write(struct.pack("!I", len(answer)) + answer)


class Server(socketserver.ThreadingTCPServer):
    allow_reuse_address = True
    daemon_threads = True


Server(("127.0.0.1", int(sys.argv[1])), Conversation).serve_forever()

#!/usr/bin/python3
"""Sends messages to a server from a given address: client.py line|table FROM PORT MESSAGE ..."""
import socket
import struct
import sys
import time

protocol, source, port, messages = sys.argv[1], sys.argv[2], int(sys.argv[3]), sys.argv[4:]
with socket.create_connection(("127.0.0.1", port), 10, (source, 0)) as server:
    stream = server.makefile("rwb")
    for message in messages:
        text = message.encode()
        stream.write(text + b"\n" if protocol == "line" else struct.pack("!I", len(text)) + text)
        stream.flush()
        if protocol == "line":
            answer = stream.readline()
        else:
            answer = stream.read(struct.unpack("!I", stream.read(4))[0])
        if answer:
            print(source, port, answer.decode().strip())
        time.sleep(0.1)

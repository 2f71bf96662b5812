#!/usr/bin/python3
"""A web server with one page: httpServer.py PORT. Accepts IPv4 and IPv6."""
import http.server
import socket
import sys


class Page(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        body = b"<html><body>The page.</body></html>\n"
        self.send_response(200)
        self.send_header("Content-Type", "text/html")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *words):
        pass


class Server(http.server.ThreadingHTTPServer):
    address_family = socket.AF_INET6

    def server_bind(self):
        self.socket.setsockopt(socket.IPPROTO_IPV6, socket.IPV6_V6ONLY, 0)
        super().server_bind()


Server(("::", int(sys.argv[1])), Page).serve_forever()

"""An FTP server on 127.0.0.1 for the upload tests.

ftpserver.py ROOT PORTFILE [CERT KEY]: serves ROOT, writes the port it listens on to
PORTFILE, and with a certificate and key speaks explicit TLS. Users (password is the user
name followed by "-pass"): "editor" may do anything, "full" is refused every upload as if
the disk were full, "slow" uploads at 64 KB a second.
"""
import os
import sys

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler, ThrottledDTPHandler, TLS_DTPHandler, TLS_FTPHandler
from pyftpdlib.servers import FTPServer
import logging


class Throttled(ThrottledDTPHandler):
    def __init__(self, sock, cmd_channel):
        self.read_limit = 64 * 1024 if cmd_channel.username == "slow" else 0
        super().__init__(sock, cmd_channel)


class TLSData(TLS_DTPHandler):
    # curl opens the data connection and starts its TLS handshake before it sends the
    # transfer command; pyftpdlib would take that early traffic for a hang-up.
    def readable(self):
        if not self.receive and not self._initialized:
            return self._ssl_accepting
        return super().readable()


def make_handler(base):
    class Handler(base):
        def ftp_STOR(self, file, mode="w"):
            if self.username == "full":
                self.respond("552 Insufficient storage space.")
                return None
            return super().ftp_STOR(file, mode)

    return Handler


def main():
    logging.basicConfig(level=logging.WARNING)
    root, port_file = sys.argv[1], sys.argv[2]
    authorizer = DummyAuthorizer()
    for user in ("editor", "full", "slow"):
        authorizer.add_user(user, user + "-pass", root, perm="elradfmwMT")
    if len(sys.argv) > 4:
        handler = make_handler(TLS_FTPHandler)
        handler.certfile = sys.argv[3]
        handler.keyfile = sys.argv[4]
        handler.tls_control_required = True
        handler.tls_data_required = True
        # Clients resume the control connection's TLS session on the data connection;
        # OpenSSL refuses that unless the server context names a session id context.
        from OpenSSL import SSL

        context = SSL.Context(SSL.TLS_SERVER_METHOD)
        context.use_certificate_chain_file(sys.argv[3])
        context.use_privatekey_file(sys.argv[4])
        context.set_session_id(b"vantry-upload-tests")
        handler.ssl_context = context
        handler.dtp_handler = TLSData
    else:
        handler = make_handler(FTPHandler)
        handler.dtp_handler = Throttled
    handler.authorizer = authorizer
    handler.passive_ports = None
    server = FTPServer(("127.0.0.1", 0), handler)
    with open(port_file + ".tmp", "w") as out:
        out.write(str(server.address[1]))
    os.rename(port_file + ".tmp", port_file)
    server.serve_forever(handle_exit=True)


if __name__ == "__main__":
    main()

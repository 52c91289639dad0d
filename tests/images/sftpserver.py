"""An SFTP server on 127.0.0.1 for the upload tests.

sftpserver.py ROOT PORTFILE KNOWNHOSTS: serves ROOT as "/" (and as the home folder) under
a host key made for the run, writes the OpenSSH known_hosts line of that key to KNOWNHOSTS
and then the port it listens on to PORTFILE. Users as in ftpserver.py: the password is the user name followed by "-pass";
"editor" may do anything, "slow" uploads at 64 KB a second.
"""
import warnings

warnings.simplefilter("ignore")  # asyncssh warns about ciphers it still offers

import asyncio
import os
import sys

import asyncssh

USERS = ("editor", "slow")


class Server(asyncssh.SSHServer):
    def begin_auth(self, username):
        return True

    def password_auth_supported(self):
        return True

    def validate_password(self, username, password):
        return username in USERS and password == username + "-pass"


def make_sftp(root):
    class Sftp(asyncssh.SFTPServer):
        def __init__(self, chan):
            super().__init__(chan, chroot=root)
            self._slow = chan.get_extra_info("username") == "slow"

        async def write(self, file_obj, offset, data):
            if self._slow:
                await asyncio.sleep(len(data) / (64 * 1024))
            return super().write(file_obj, offset, data)

    return Sftp


async def serve(root, port_file, known_hosts):
    host_key = asyncssh.generate_private_key("ssh-ed25519")
    server = await asyncssh.listen(
        "127.0.0.1",
        0,
        server_host_keys=[host_key],
        server_factory=Server,
        sftp_factory=make_sftp(root),
        allow_scp=False,
    )
    port = server.sockets[0].getsockname()[1]
    with open(known_hosts, "wb") as out:
        out.write(b"[127.0.0.1]:%d " % port + host_key.export_public_key("openssh"))
    with open(port_file + ".tmp", "w") as out:
        out.write(str(port))
    os.rename(port_file + ".tmp", port_file)
    await asyncio.Event().wait()


def main():
    asyncio.run(serve(*sys.argv[1:4]))


if __name__ == "__main__":
    main()

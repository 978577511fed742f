"""A disk in one file that keeps in order what is written to it and flushed, so that any loss of power can be played through.

A file system in user space of one file, `disk`, in the kernel's own protocol (linux/fuse.h). Closing /dev/fuse ends it, however the
process ends.
"""
import ctypes
import os
import struct
import threading

LOOKUP, FORGET, GETATTR, SETATTR, OPEN, READ, WRITE, STATFS, RELEASE, FSYNC, FLUSH, INIT, OPENDIR, RELEASEDIR, INTERRUPT, DESTROY, BATCH_FORGET = (
    1, 2, 3, 4, 14, 15, 16, 17, 18, 20, 25, 26, 27, 29, 36, 38, 42)
ROOT, DISK = 1, 2
NOT_THERE, NOT_KNOWN = -2, -38
LARGEST_WRITE = 1 << 17
CLONE_NEWNS = 0x20000
REQUEST, ANSWER = struct.Struct("<IIQQIIIHH"), struct.Struct("<IiQ")
FLUSHED = None  # in `log`, beside (offset, bytes) of a write and a text of `note`

libc = ctypes.CDLL(None, use_errno=True)


def own_mounts():
    """Gives this process a table of mounts of its own, which goes with it. Raises OSError where that is forbidden."""
    if libc.unshare(CLONE_NEWNS) != 0:
        raise OSError(ctypes.get_errno(), "no mounts of our own")
    private_and_below = (1 << 18) | (1 << 14)
    if libc.mount(b"none", b"/", None, private_and_below, None) != 0:
        raise OSError(ctypes.get_errno(), "no private mounts")


class NotingDisk:
    """`content` is what the disk holds at first; `log` is what came since. Raises OSError where mounting is forbidden."""

    def __init__(self, folder, content):
        self.content = bytearray(content)
        self.log = []
        self.device = os.open("/dev/fuse", os.O_RDWR)
        options = f"fd={self.device},rootmode=40000,user_id=0,group_id=0".encode()
        if libc.mount(b"noting_disk", os.fsencode(folder), b"fuse", 0, options) != 0:
            raise OSError(ctypes.get_errno(), "cannot mount")
        self.path = os.path.join(folder, "disk")
        threading.Thread(target=self.serve, daemon=True).start()

    def note(self, text):
        self.log.append(text)

    def serve(self):
        while True:
            try:
                request = os.read(self.device, LARGEST_WRITE + 4096)
            except OSError:
                return  # unmounted
            _, operation, number, node, *_ = REQUEST.unpack_from(request)
            if operation in (FORGET, BATCH_FORGET, INTERRUPT):
                continue
            answer = self.answer(operation, node, request[REQUEST.size:])
            error, body = (answer, b"") if isinstance(answer, int) else (0, answer)
            os.write(self.device, ANSWER.pack(ANSWER.size + len(body), error, number) + body)

    def answer(self, operation, node, body):
        """What the kernel gets: bytes, or the number of an error."""
        if operation == INIT:
            return struct.pack("<IIIIHHIIHHI28x", 7, 31, 0, 1 << 5, 16, 12, LARGEST_WRITE, 1, 0, 0, 0)
        if operation == LOOKUP:
            return struct.pack("<QQQQII", DISK, 0, 60, 60, 0, 0) + self.attributes(DISK) if body == b"disk\0" else NOT_THERE
        if operation in (GETATTR, SETATTR):
            return struct.pack("<QII", 60, 0, 0) + self.attributes(node)
        if operation in (OPEN, OPENDIR):
            return bytes(16)
        if operation == READ:
            _, offset, size = struct.unpack_from("<QQI", body)
            return bytes(self.content[offset:offset + size])
        if operation == WRITE:
            _, offset, size = struct.unpack_from("<QQI", body)
            self.content[offset:offset + size] = body[40:40 + size]
            self.log.append((offset, body[40:40 + size]))
            return struct.pack("<II", size, 0)
        if operation == FSYNC:
            self.log.append(FLUSHED)
        return {FSYNC: b"", FLUSH: b"", RELEASE: b"", RELEASEDIR: b"", DESTROY: b"", STATFS: bytes(80)}.get(operation, NOT_KNOWN)

    def attributes(self, node):
        size, mode = (len(self.content), 0o100600) if node == DISK else (0, 0o40700)
        return struct.pack("<QQQ24x12xIIIIIII", node, size, size // 512, mode, 1, 0, 0, 0, 4096, 0)

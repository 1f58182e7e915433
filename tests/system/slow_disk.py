"""A file system that passes all on to a folder, and whose syncs or writes take as long as the folder says.

slow_disk.py FOLDER MOUNT_POINT; the seconds stand in FOLDER/sync_seconds and FOLDER/write_seconds. The kernel
holds a file's lock while such a sync runs, so that a write to the same file waits as long. While there is a
number in FOLDER/refused, all that would change something fails with it.
"""

import os
import pathlib
import sys
import time

from fusepy import FUSE, Operations


class SlowDisk(Operations):
    def __init__(self, folder):
        self.folder = folder

    def place(self, path):
        return os.path.join(self.folder, path.lstrip("/"))

    def getattr(self, path, fh=None):
        status = os.lstat(self.place(path))
        return {key: getattr(status, key) for key in (
            "st_atime", "st_ctime", "st_gid", "st_mode", "st_mtime", "st_nlink", "st_size", "st_uid")}

    def readdir(self, path, fh):
        return [".", "..", *os.listdir(self.place(path))]

    def refuse(self):
        place = pathlib.Path(self.folder) / "refused"
        if place.exists():
            raise OSError(int(place.read_text()), "refused")

    def mkdir(self, path, mode):
        self.refuse()
        return os.mkdir(self.place(path), mode)

    def unlink(self, path):
        return os.unlink(self.place(path))

    def rename(self, old, new):
        return os.rename(self.place(old), self.place(new))

    def open(self, path, flags):
        return os.open(self.place(path), flags & ~os.O_APPEND)

    def create(self, path, mode, fi=None):
        self.refuse()
        return os.open(self.place(path), os.O_RDWR | os.O_CREAT, mode)

    def read(self, path, length, offset, fh):
        return os.pread(fh, length, offset)

    def wait(self, name):
        place = pathlib.Path(self.folder) / name
        time.sleep(float(place.read_text()) if place.exists() else 0)

    def write(self, path, data, offset, fh):
        self.refuse()
        self.wait("write_seconds")
        return os.pwrite(fh, data, offset)

    def truncate(self, path, length, fh=None):
        self.refuse()
        os.truncate(self.place(path), length)

    def release(self, path, fh):
        os.close(fh)

    def fsync(self, path, datasync, fh):
        self.wait("sync_seconds")
        with open(pathlib.Path(self.folder) / "syncs", "a", encoding="utf-8") as syncs:
            syncs.write(f"{time.monotonic()} {path}\n")


if __name__ == "__main__":
    FUSE(SlowDisk(sys.argv[1]), sys.argv[2], foreground=True)

"""What the system is asked for when a port closes behind its last frame."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest


class SerialClose(unittest.TestCase):
    def test_a_frame_is_written_and_drained_before_the_settings_go_back_and_the_port_closes(self):
        with tempfile.TemporaryDirectory() as folder:
            trace = pathlib.Path(folder) / "trace"
            subprocess.run(["strace", "-o", trace, "-e", "trace=openat,write,ioctl,close",
                            os.environ["DESKTOP_TESTS"], "platform_test",
                            "output_before_a_close_reaches_the_line"],
                           env=os.environ | {"ASAN_OPTIONS": "detect_leaks=0"},  # which cannot be traced
                           check=True, stdout=subprocess.DEVNULL)
            calls = trace.read_text().splitlines()
        opened = next(index for index, call in enumerate(calls) if 'openat(AT_FDCWD, "/dev/pts/' in call)
        self.assertIn("O_NOCTTY|O_NONBLOCK", calls[opened])
        port = calls[opened].rsplit("= ", 1)[1]
        written = next(index for index, call in enumerate(calls) if f"write({port}, \":80092f" in call)
        steps = [re.search(r"^write|^close|TIOCOUTQ|TCSBRK, 1|TCSETS", call) for call in calls[written:]
                 if re.match(rf"\w+\({port}\b", call)]
        self.assertEqual([step.group() for step in steps if step],
                         ["write", "TIOCOUTQ", "TIOCOUTQ", "TCSBRK, 1", "TCSETS", "close"])


if __name__ == "__main__":
    unittest.main()

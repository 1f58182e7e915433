"""Logs of a simulated plant in a PostgreSQL server: every line once, however often they are loaded.

    fleet_test.py XLG SIMULATE
"""

import shutil
import subprocess
import sys
import tempfile
import unittest
from collections import Counter
from pathlib import Path

import fleet_server
import plain_logs

XLG, SIMULATE = (Path(word).resolve() for word in sys.argv[1:3])

TABLES = ("records", "curves", "comments", "events")


def setUpModule():
    Loading.folder = Path(tempfile.mkdtemp())
    unittest.addModuleCleanup(shutil.rmtree, Loading.folder)
    Loading.server = fleet_server.Server(XLG)
    unittest.addModuleCleanup(Loading.server.remove)


def counted(told, what):
    """How many rows of a kind the loader says it added."""
    return sum(int(words.split()[-1]) for line in told.splitlines()
               for words in line.rpartition(": ")[2].split(", ") if words.startswith(what + " "))


class Loading(unittest.TestCase):
    server = None
    folder = None

    def simulated(self, seed):
        """The folder with the logs of a day, made once."""
        kept = self.folder / f"seed {seed}"
        if not kept.exists():
            words = [SIMULATE, "--replay", str(seed), "--days", "1", "--keep", kept]
            subprocess.run(words, check=True, capture_output=True)
        return kept

    def a_log(self, least=100_000):
        return min((log for log in self.simulated(2).rglob("*.xlg") if log.stat().st_size > least),
                   key=lambda log: log.stat().st_size)

    def stored(self, plant):
        """All lines of logs, as they stand in the tables, and how often."""
        where = f"""JOIN fleet.engines ON engines.id = engine JOIN fleet.files ON files.id = file
                    WHERE files.plant = '{plant}'"""
        told = self.server.ask(f"""
            SELECT location, at, name, line, 'REC1',
                   concat_ws(' ', tsignal, speed, tvoltage, teff_dc, teff_ac)
            FROM fleet.records {where}
            UNION ALL SELECT location, at, name, line, record, array_to_string(samples, ' ')
            FROM fleet.curves {where}
            UNION ALL SELECT location, at, name, line, kind, text FROM fleet.comments {where}""")
        return Counter(told)

    def written(self, *logs):
        """The same, from the logs."""
        return Counter((row.location, str(row.at), row.name, str(row.line), row.kind,
                        row.value if isinstance(row.value, str) else " ".join(map(str, row.value)))
                       for log in logs for row in plain_logs.rows_of(log))

    def assert_loaded(self, answer, code=0):
        self.assertEqual((answer[0], answer[2] if code == 0 else ""), (code, ""), answer)

    def test_every_line_is_a_row_and_none_is_doubled(self):
        plant = self.simulated(2)
        self.assert_loaded(self.server.load(plant, plant="Twice"))
        wanted = self.written(*plant.rglob("*.xlg"))
        self.assertEqual(self.stored("Twice"), wanted)
        self.assertEqual({row[4] for row in wanted} & {"REC1", "REC2", "REC3", "comment"},
                         {"REC1", "REC2", "REC3", "comment"})
        several = Counter((row[0], row[1]) for row in wanted if row[4] == "REC1")
        self.assertGreater(max(several.values()), 1, "no two records of one second")
        answer = self.server.load(plant, plant="Twice")
        self.assert_loaded(answer)
        self.assertEqual({line.rpartition(": ")[2] for line in answer[1].splitlines()}, {"nothing new"})
        self.assertEqual(self.stored("Twice"), wanted)

    def test_the_keys_alone_keep_rows_from_doubling(self):
        log = self.a_log()
        self.assert_loaded(self.server.load(log, plant="Forgotten"))
        self.server.ask("""UPDATE fleet.files SET bytes = 0, record_line = 0, curve_line = 0, comment_line = 0
                           WHERE plant = 'Forgotten'""")
        answer = self.server.load(log, plant="Forgotten")
        self.assert_loaded(answer)
        self.assertIn("no new rows", answer[1])
        self.assertEqual(self.stored("Forgotten"), self.written(log))

    def test_every_event_is_a_row(self):
        file, = self.simulated(2).rglob("TY_all_events.txt")
        lines = file.read_bytes().decode("cp1252").split("\r\n")[:-1]
        wanted = [(f"{line[9:13]}-{line[3:5]}-{line[6:8]} {line[14:22]}", str(number), line[23:])
                  for number, line in enumerate(lines, 1)]
        for _ in range(2):
            self.assert_loaded(self.server.load(file, plant="Events"))
            self.assertEqual(self.server.ask("""SELECT at, line, text FROM fleet.events JOIN fleet.files
                ON files.id = file WHERE plant = 'Events' ORDER BY line"""), wanted)

    def test_a_log_that_is_being_written_is_loaded_as_far_as_it_is(self):
        whole = self.a_log()
        text = whole.read_bytes()
        first = text.index(b"<LOG>") + 7
        second_line = text.index(b"\r\n", first) + 2
        ends = [200, first + 10, second_line, second_line + 20, len(text) // 2, len(text) // 2 + 1, len(text)]
        growing = self.folder / "growing" / whole.name
        growing.parent.mkdir()
        added = 0
        for end in ends:
            growing.write_bytes(text[:end])
            code, told, complaint = self.server.load(growing, plant="Growing")
            self.assertIn(code, (0, 1), complaint)  # a line that is half written is left out for now
            added += sum(counted(told, table) for table in TABLES)
            self.assertEqual(self.stored("Growing"), self.written(growing))
        self.assertEqual(self.stored("Growing"), self.written(whole))
        self.assertEqual(added, self.stored("Growing").total())

    def test_records_of_one_second_that_are_all_alike_are_all_kept(self):
        log = self.folder / "20260702Qu_Alike.xlg"
        log.write_bytes(b"<LOG>\r\n" + b"<REC1> 23:59:59 1 2 3 4 5 </REC1>\r\n" * 7)
        for _ in range(2):
            self.server.load(log, plant="Alike")  # complains of the header
            self.assertEqual(self.stored("Alike"), self.written(log))
            self.assertEqual(self.stored("Alike").total(), 7)

    def test_a_log_that_goes_on_into_the_next_month(self):
        """Whichever kind of line is the first of it."""
        head = self.a_log().read_bytes().partition(b"<LOG>\r\n")[0] + b"<LOG>\r\n"
        curve = " ".join(map(str, range(256))).encode()
        for month, line in (("01", b"<REC1> 00:00:00 1 2 3 4 5 </REC1>\r\n"),
                            ("03", b"<REC2> 00:00:01 %s  </REC2>\r\n" % curve),
                            ("05", b'<!-- 00:00:02 Kolben "3", \xfcber 80 % -->\r\n')):
            log = self.folder / f"2025{month}31Qu_Night.xlg"
            log.write_bytes(head + b"<REC1> 23:59:59 1 2 3 4 5 </REC1>\r\n" + line)
            self.assert_loaded(self.server.load(log, plant=f"Night {month}"))
            self.assertEqual(self.stored(f"Night {month}"), self.written(log))
            self.assertEqual({row[1][:7] for row in self.stored(f"Night {month}")},
                             {f"2025-{month}", f"2025-0{int(month) + 1}"})

    def test_an_earlier_copy_in_another_folder_is_no_second_log(self):
        log = self.a_log()
        self.assert_loaded(self.server.load(log, plant="Copies"))
        copy = self.folder / "copy" / log.name
        copy.parent.mkdir()
        copy.write_bytes(log.read_bytes()[:-5000])
        answer = self.server.load(copy, log, plant="Copies")
        self.assert_loaded(answer)
        self.assertIn("shorter than what was loaded", answer[1])
        self.assertEqual(self.stored("Copies"), self.written(log))

    def test_a_log_that_was_changed_is_left_out(self):
        log = self.a_log()
        self.assert_loaded(self.server.load(log, plant="Changed"))
        changed = self.folder / "changed" / log.name
        changed.parent.mkdir()
        text = log.read_bytes()
        changed.write_bytes(text[:-3000] + b"<!-- 12:00:00 by hand -->\r\n" + text[-3000:])
        answer = self.server.load(changed, plant="Changed")
        self.assert_loaded(answer, code=1)
        self.assertIn("changed in what was loaded", answer[1])
        self.assertEqual(self.stored("Changed"), self.written(log))

    def test_of_a_damaged_log_all_sound_lines_are_loaded(self):
        plant = self.simulated(3)
        code, _, complaint = self.server.load(*plant.rglob("*.xlg"), plant="Damaged")
        self.assertEqual(code, 1)
        self.assertRegex(complaint, r"load: .*\.xlg: \d+ damaged lines? left out")
        self.assertEqual(self.stored("Damaged"), self.written(*plant.rglob("*.xlg")))

    def test_two_loaders_side_by_side_double_nothing(self):
        log = self.a_log()
        words = [fleet_server.FLEET / "load", "--plant", "Both", log]
        loaders = [subprocess.Popen(words, env=self.server.environment, stdout=subprocess.DEVNULL)
                   for _ in range(2)]
        self.assertEqual([loader.wait(100) for loader in loaders], [0, 0])
        self.assertEqual(self.stored("Both"), self.written(log))

    def test_a_full_disk_is_told_and_leaves_no_half_of_a_log(self):
        log = self.a_log()
        self.server.ask("""CREATE FUNCTION fleet.full() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN
            RAISE EXCEPTION 'could not extend file' USING ERRCODE = 'disk_full'; END $$;
            CREATE TRIGGER full_disk BEFORE UPDATE ON fleet.files EXECUTE FUNCTION fleet.full()""")
        try:
            code, _, complaint = self.server.load(log, plant="Full")
        finally:
            self.server.ask("DROP FUNCTION fleet.full CASCADE")
        self.assertEqual(code, 4)
        self.assertIn("the server's disk is full", complaint)
        self.assertFalse(self.stored("Full"))
        self.assert_loaded(self.server.load(log, plant="Full"))
        self.assertEqual(self.stored("Full"), self.written(log))

    def test_what_cannot_be_done_is_told(self):
        log = self.a_log()
        environment = self.server.environment
        for settings, words, code, why in (
                ({"PGHOST": "/nowhere"}, [log], 3, "the server cannot be reached"),
                ({"PGDATABASE": "postgres"}, [log], 4, "schema.sql"),
                ({}, [self.folder / "none.xlg"], 2, "No such file"),
                ({"XLG": "/nowhere/xlg"}, [log], 2, "/nowhere/xlg"),
                ({}, [], 2, "FILE_OR_FOLDER")):
            with self.subTest(why):
                self.server.environment = environment | settings
                try:
                    answer = self.server.load(*words, plant="Nothing")
                finally:
                    self.server.environment = environment
                self.assertEqual(answer[0], code, answer)
                self.assertIn(why, answer[2])
        self.assertFalse(self.stored("Nothing"))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])

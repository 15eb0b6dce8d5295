"""When objects of the module live and when they are let go, threads, and the example."""

import gc
import os
import re
import shutil
import subprocess
import sys
import threading
import unittest

import lumidex
from host import MODULE_FILE, ROOT, SAMPLES, HostTest

PANORAMA = SAMPLES / "panorama.jpg"


class LifetimeTest(HostTest):
    def test_with_lets_go(self):
        with self.module.open(PANORAMA) as photo:
            self.assertFalse(self.module.can_unload())
        self.assertTrue(self.module.can_unload())
        for call in (photo.pose, photo.records, photo.xmp_packet, photo.is_panorama, photo.info18):
            self.assertRaises(ValueError, call)
        photo.close()
        self.assertEqual(photo.path, str(PANORAMA))

    def test_last_reference_lets_go(self):
        photo = self.module.open(PANORAMA)
        self.assertFalse(self.module.can_unload())
        del photo
        gc.collect()
        self.assertTrue(self.module.can_unload())

    def test_photograph_in_a_circle_is_let_go(self):
        photo = self.module.open(PANORAMA)
        photo.itself = photo
        del photo
        gc.collect()
        self.assertTrue(self.module.can_unload())

    def test_refused_file_leaves_nothing(self):
        self.assertRaises(lumidex.LumidexError, self.module.open, self.folder)
        gc.collect()
        self.assertTrue(self.module.can_unload())

    def test_records_and_calls_of_the_module_leave_nothing(self):
        with self.module.open(PANORAMA) as photo:
            records = photo.records()
        self.module.file_type(PANORAMA)
        self.module.write_metadata(PANORAMA, self.folder / "a.jpg", records, overwrite=True)
        self.assertTrue(self.module.can_unload())

    def test_photograph_outlives_the_module_that_opened_it(self):
        photo = lumidex.load(MODULE_FILE).open(PANORAMA)
        gc.collect()
        self.assertEqual(photo.pose().heading, 123.5)
        photo.close()

    def test_program_may_end_with_a_photograph_open(self):
        program = ("import lumidex, sys; photo = lumidex.load(sys.argv[1]).open(sys.argv[2]); "
                   "print(photo.pose().heading)")
        done = subprocess.run([sys.executable, "-B", "-c", program, MODULE_FILE, str(PANORAMA)],
                              capture_output=True, text=True, timeout=60, check=False)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "123.5\n", ""))


class ThreadsTest(HostTest):
    def in_threads(self, work):
        wrong = []

        def run():
            try:
                for _ in range(50):
                    work()
            except Exception as error:  # told by the test's own thread
                wrong.append(error)

        threads = [threading.Thread(target=run) for _ in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(wrong, [])

    def test_one_module_serves_many_threads(self):
        def work():
            with self.module.open(PANORAMA) as photo:
                self.assertEqual(photo.pose().heading, 123.5)
        self.in_threads(work)

    def test_one_photograph_serves_many_threads(self):
        with self.module.open(PANORAMA) as photo:
            packet, records = photo.xmp_packet(), photo.records()
            self.assertEqual(packet, re.search(rb"<\?xpacket.*\"r\"\?>", PANORAMA.read_bytes(),
                                               re.DOTALL).group())

            def work():
                self.assertEqual(photo.records(), records)
                self.assertEqual(photo.xmp_packet(), packet)
                self.assertEqual(photo.pose().roll, 0.75)
            self.in_threads(work)

    def test_photograph_closed_by_another_thread_is_refused(self):
        photo = self.module.open(PANORAMA)
        closed = threading.Event()

        def work():
            try:
                photo.records()
            except ValueError:
                closed.set()
        closer = threading.Timer(0.02, photo.close)
        closer.start()
        while not closed.is_set():
            self.in_threads(work)
        closer.join()


class ExampleTest(HostTest):
    def test_example_of_the_readme_runs(self):
        text = (ROOT / "bindings" / "python" / "README.md").read_text(encoding="utf-8")
        example = re.search(r"```python\n(.*?)```", text, re.DOTALL).group(1)
        shutil.copy(MODULE_FILE, self.folder / "LumidexMgr.so")
        shutil.copy(PANORAMA, self.folder / "photo.jpg")
        done = subprocess.run([sys.executable, "-B", "-c", example], cwd=self.folder, timeout=60,
                              capture_output=True, text=True, check=False,
                              env=dict(os.environ, PYTHONPATH=os.path.dirname(lumidex.__file__)))
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        lines = done.stdout.splitlines()
        self.assertEqual(lines[0], "JPEG True 123.5")
        self.assertEqual(lines[6], "2 271 LumidexMgr")
        self.assertEqual(lines[7], "4 33434 (Rational(numerator=1, denominator=500),)")
        self.assertIn(b"A. Photographer\0", (self.folder / "copy.jpg").read_bytes())


if __name__ == "__main__":
    unittest.main()

# SPDX-License-Identifier: Apache-2.0
"""What the test programs on a bed share: how they are run and skipped."""
import os
import shutil
import sys
import unittest

import bed_network

NEEDED = ["ip", "nsenter", "unshare", "arv-tool-0.8", "arv-fake-gv-camera-0.8"]


class BedTest(unittest.TestCase):
    """A fresh bed for every test."""

    def setUp(self):
        self.bed = bed_network.Bed()
        self.addCleanup(self.bed.__exit__)

    def devices_by_serial(self, *arguments):
        listing = self.bed.list(*arguments)
        devices = {device["serial"]: device for device in listing["devices"]}
        self.assertEqual(len(devices), len(listing["devices"]), "a device is listed twice")
        return devices


def main():
    """Runs the tests of the calling program. Ends with 77 where something is missing."""
    missing = [tool for tool in NEEDED if shutil.which(tool) is None]
    if missing:
        print("skipped: not installed: " + " ".join(missing))
        sys.exit(77)
    if not os.access(bed_network.program("kel-devices"), os.X_OK):
        sys.exit("KEL_BIN does not name the folder of kel-devices")
    unittest.main(verbosity=2)

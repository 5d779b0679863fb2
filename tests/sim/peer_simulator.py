# SPDX-License-Identifier: Apache-2.0
"""The simulated cameras before a client that this project did not write, and the simulator's own ways."""
import os
import signal
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "support"))
import bed_network  # noqa: E402
import bed_tests  # noqa: E402

SIM = os.path.join(os.path.dirname(__file__), "..", "..", "sim")


class IndependentClient(bed_tests.BedTest):
    def setUp(self):
        super().setUp()
        self.bed.card("cam0", "192.168.50.1/24")
        self.simulator = self.bed.simulator(["w-cam0"], "--card", "sim-cam0", "--fleet", "A 3 address=192.168.50.11/24")

    def listed(self):
        return self.bed.host.run(["arv-tool-0.8"]).stdout.splitlines()

    def control(self, *words):
        return self.bed.host.run(["arv-tool-0.8", "-a", "192.168.50.12", "control", *words]).stdout

    def test_it_lists_every_camera(self):
        self.assertEqual(self.listed(), ["Simulated Cameras-Area 5M-A000%d (192.168.50.1%d)" % (n, n)
                                         for n in (1, 2, 3)])

    def test_it_does_not_list_an_unplugged_camera(self):
        self.simulator.tell("unplug", "A2")

        self.assertEqual(len(self.listed()), 2)

    def test_it_reads_the_description_file_and_its_features(self):
        text = self.control("DeviceVendorName", "DeviceSerialNumber", "GevCCP", "GevPrimaryApplicationIPAddress")

        self.assertIn("DeviceVendorName = Simulated Cameras", text)
        self.assertIn("DeviceSerialNumber = A0002", text)
        self.assertIn("GevCCP = 2", text)
        self.assertIn("GevPrimaryApplicationIPAddress = %d" % 0xC0A83201, text)

    def test_it_takes_control_writes_and_lets_go(self):
        self.assertIn("DeviceUserID = Left", self.control("DeviceUserID=Left", "DeviceUserID"))
        self.assertIn("GevSCPHostPort = 5000", self.control("GevSCPHostPort=5000", "GevSCPHostPort"))

        self.assertNotIn("held", self.simulator.tell("list", "A2")[0])

    def test_it_does_not_get_control_of_a_held_camera(self):
        self.simulator.tell("hold", "A2", "192.168.50.77")
        self.control("DeviceUserID=Thief")

        self.assertIn("held 192.168.50.77", self.simulator.tell("list", "A2")[0])
        self.assertNotIn(b"Thief", bed_network.GvcpClient(self.bed.host, "192.168.50.12").ask(
            0x0084, b"\0\0\0\xe8\0\0\0\x10")[1])


class Network(bed_tests.BedTest):
    def simulator(self, *arguments):
        self.bed.card("cam0", "192.168.50.1/24")
        return self.bed.simulator(["w-cam0"], "--card", "sim-cam0", *arguments)

    def addresses(self, simulator):
        return [word.split("/")[0] for word in simulator.namespace.run(["ip", "-4", "-br", "addr"]).stdout.split()
                if "/" in word]

    def test_cameras_get_their_addresses_and_give_them_back(self):
        simulator = self.simulator("--fleet", "A 3 address=192.168.50.11/24")
        self.assertEqual(self.addresses(simulator),
                         ["127.0.0.1", "192.168.50.11", "192.168.50.12", "192.168.50.13"])

        simulator.process.terminate()
        self.assertEqual(simulator.process.wait(5), 0)

        self.assertEqual(self.addresses(simulator), ["127.0.0.1"])

    def test_first_camera_that_moves_leaves_the_others_their_addresses(self):
        simulator = self.simulator("--fleet", "A 3 address=192.168.50.11/24")

        simulator.tell("move", "A1", "10.9.8.7", "255.0.0.0")

        self.assertEqual(sorted(self.addresses(simulator)),
                         ["10.9.8.7", "127.0.0.1", "192.168.50.12", "192.168.50.13"])

    def test_force_ip_moves_the_camera(self):
        simulator = self.simulator("--camera", "A address=192.168.50.11/24 mac=02:00:00:00:00:0a")
        payload = bytearray(56)
        payload[2:8] = bytes([2, 0, 0, 0, 0, 10])
        payload[20:24] = bytes([192, 168, 50, 99])
        payload[36:40] = bytes([255, 255, 255, 0])
        with bed_network.GvcpClient(self.bed.host, "192.168.50.11") as client:
            client.ask(0x0004, bytes(payload))

        self.assertIn("192.168.50.99/24", simulator.tell("list", "A")[0])
        with bed_network.GvcpClient(self.bed.host, "192.168.50.99") as client:
            self.assertEqual(client.read(0x0024), 0xC0A83263)

    def test_camera_is_added_while_the_others_play(self):
        simulator = self.simulator("--camera", "A address=192.168.50.11/24")

        simulator.tell("camera B card=sim-cam0 address=192.168.50.12/24")

        with bed_network.GvcpClient(self.bed.host, "192.168.50.12") as client:
            self.assertEqual(client.read(0x0024), 0xC0A8320C)

    def test_two_simulators_share_a_card(self):
        first = self.simulator("--camera", "A address=192.168.50.11/24")
        bed_network.Simulator(self.bed, first.namespace, ["--manage-addresses", "--card", "sim-cam0", "--camera",
                                                          "B address=192.168.50.12/24 hold=192.168.50.9"])

        devices = self.devices_by_serial()

        self.assertEqual((devices["A"]["state"], devices["B"]["state"]), (1, 2))

    def test_wrong_commands_are_named_and_change_nothing(self):
        simulator = self.simulator("--camera", "A address=192.168.50.11/24")
        before = simulator.tell("list")
        for command, named in (("fly A", "unknown command 'fly'"), ("plug", "wrong arguments"),
                               ("plug X", "no camera 'X'"), ("move A 300.1.1.1 24", "wrong arguments"),
                               ("multicast A 239.1.2.3", "wrong arguments"), ("lose A many", "wrong arguments"),
                               ("bad A smell", "wrong arguments"), ("name A \"open", "quote"),
                               ("camera A card=sim-cam0 address=192.168.50.12/24", "already"),
                               ("camera B card=none address=192.168.50.12/24", "no card 'none'")):
            with self.assertRaisesRegex(RuntimeError, named):
                simulator.tell(command)

        self.assertEqual(simulator.tell("list"), before)


class CommandLine(bed_tests.BedTest):
    def error_of(self, *arguments):
        done = self.bed.host.run([bed_network.program("kel-sim-cameras"), *arguments], timeout=5)
        self.assertEqual(done.returncode, 2, arguments)
        self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)
        return done.stderr

    def test_wrong_arguments_end_it_with_one_line(self):
        self.assertIn("unknown argument '--colour'", self.error_of("--colour"))
        self.assertIn("needs an argument", self.error_of("--config"))
        self.assertIn("cannot be read", self.error_of("--config", "/nonexistent"))
        self.assertIn("no card=NAME", self.error_of("--camera", "A address=192.168.50.11/24"))
        self.assertIn("no card 'cam9'", self.error_of("--card", "cam9", "--camera", "A address=192.168.50.11/24"))
        self.assertIn("cannot listen on 192.168.50.11",
                      self.error_of("--card", "lo", "--camera", "A address=192.168.50.11/24"))
        self.assertIn("control socket", self.error_of("--control", "/x" * 100))

    def test_control_socket_takes_commands_and_goes_with_the_simulator(self):
        self.bed.card("cam0", "192.168.50.1/24")
        path = os.path.join(tempfile.mkdtemp(), "control")
        simulator = self.bed.simulator(["w-cam0"], "--card", "sim-cam0", "--camera", "A address=192.168.50.11/24",
                                       "--control", path)
        tell = [bed_network.program("kel-sim-cameras"), "--control", path, "--tell"]

        self.assertIn("A plugged", self.bed.host.run(tell + ["list"]).stdout)
        self.assertEqual(self.bed.host.run(tell + ["name", "A", "two words"]).returncode, 0)
        wrong = self.bed.host.run(tell + ["fly", "A"])
        self.assertEqual(wrong.returncode, 1)
        self.assertIn("unknown command", wrong.stderr)
        self.assertEqual(self.bed.host.run(tell + ["quit"]).returncode, 0)
        self.assertEqual(simulator.process.wait(5), 0)
        self.assertFalse(os.path.exists(path))
        self.assertEqual(self.bed.host.run(tell + ["list"]).returncode, 1)


class Demonstration(bed_tests.BedTest):
    def run_demo(self, script):
        return subprocess.run([os.path.join(SIM, "demo-network"), "sh", "-c", script], capture_output=True, text=True,
                              timeout=60)

    def test_it_shows_every_state_and_place(self):
        done = self.run_demo("$KEL_BIN/kel-devices list --transport gige")

        self.assertEqual(done.returncode, 0, done.stderr)
        for words in (" free ", " in use ", " in use, multicast ", " unreachable "):
            self.assertIn(words, done.stdout)
        placements = self.run_demo("$KEL_BIN/kel-devices list --transport gige --json").stdout
        for placement in (0, 1, 2):
            self.assertIn('"placement":%d' % placement, placements)

    def test_it_is_steered_from_inside(self):
        done = self.run_demo("$KEL_BIN/kel-sim-cameras --tell unplug entrance && "
                             "$KEL_BIN/kel-devices list --transport gige --json")

        self.assertNotIn("HO-20117", done.stdout)
        self.assertIn("HO-20118", done.stdout)

    def test_it_ends_with_the_commands_status_and_leaves_nothing(self):
        done = self.run_demo('echo "$KEL_SIM_CONTROL"; exit 7')

        self.assertEqual(done.returncode, 7)
        self.assertFalse(os.path.exists(os.path.dirname(done.stdout.strip())))


if __name__ == "__main__":
    bed_tests.main()

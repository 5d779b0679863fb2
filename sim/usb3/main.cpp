// SPDX-License-Identifier: Apache-2.0
// Runs a command on a machine with simulated USB devices: what it sees under /sys and /dev is the scene's.
// To be started under umockdev-wrapper.
#include "UsbAnswers.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

using namespace kelsim;

namespace
{

int usage()
{
    std::fprintf(stderr, "usage: umockdev-wrapper kel-mock-usb SCENE COMMAND [ARGUMENT]…\n");
    return 2;
}

/// Nobody but root may open the node then, and that is meant to be tried as an ordinary user.
void forbid(UMockdevTestbed *testbed, const UsbDevice &device)
{
    gchar *root = umockdev_testbed_get_root_dir(testbed);
    ::chmod((std::string(root) + device.node()).c_str(), 0);
    g_free(root);
}

pid_t g_child = 0;

void passOn(int signal)
{
    if (g_child > 0)
        ::kill(g_child, signal);
}

int runCommand(char **command)
{
    g_child = ::fork();
    if (g_child == 0) {
        ::execvp(command[0], command);
        std::fprintf(stderr, "kel-mock-usb: %s: %s\n", command[0],
                     std::strerror(errno)); // NOLINT(concurrency-mt-unsafe)
        ::_exit(127);
    }
    if (g_child < 0)
        return 1;
    std::signal(SIGINT, passOn);
    std::signal(SIGTERM, passOn);
    int status = 0;
    while (::waitpid(g_child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 3)
        return usage();
    std::string error;
    const std::vector<UsbDevice> devices = readUsbScene(argv[1], error);
    if (!error.empty()) {
        std::fprintf(stderr, "kel-mock-usb: %s\n", error.c_str());
        return 2;
    }
    UMockdevTestbed *testbed = umockdev_testbed_new();
    std::vector<std::unique_ptr<UsbAnswers>> answers;
    for (const UsbDevice &device : devices) {
        if (device.has("nodeless"))
            continue;
        answers.push_back(std::make_unique<UsbAnswers>(device));
        if (!answers.back()->attachTo(testbed))
            return 1;
    }
    GError *failure = nullptr;
    if (!umockdev_testbed_add_from_string(testbed, describeUsbScene(devices).c_str(), &failure)) {
        std::fprintf(stderr, "kel-mock-usb: %s\n", failure ? failure->message : "the scene cannot be added");
        return 1;
    }
    for (const UsbDevice &device : devices) {
        if (device.has("forbidden"))
            forbid(testbed, device);
    }
    const int status = runCommand(argv + 2);
    answers.clear();
    g_object_unref(testbed);
    return status;
}

// SPDX-License-Identifier: Apache-2.0
// Plays any number of GigE Vision cameras on the network cards of this host or namespace.
#include "CameraNetwork.h"
#include "ControlChannel.h"
#include "Steering.h"

#include <poll.h>
#include <sys/signalfd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace
{

using namespace kelsim;

struct Options {
    std::string card;
    std::string controlPath;
    std::vector<std::pair<std::string, std::string>> sources; ///< option and its text, in the order given
    bool managesAddresses = false;
    bool readsStdin = false;
    bool isHelp = false;
    std::string command; ///< for another simulator
};

void printHelp()
{
    std::printf("kel-sim-cameras [--card NAME] [--manage-addresses] [--control PATH] [--stdin]\n"
                "                [--config FILE] [--camera 'ID key=value...']\n"
                "                [--fleet 'PREFIX COUNT key=value...']\n"
                "kel-sim-cameras [--control PATH] --tell COMMAND...\n\n"
                "Plays GigE Vision cameras. A file holds lines \"card NAME\", \"camera ID key=value...\" and\n"
                "\"fleet PREFIX COUNT key=value...\"; an address is written address=192.168.50.11/24.\n"
                "Prints \"ready\" when all cameras listen. Without --control, --tell takes the path from\n"
                "KEL_SIM_CONTROL. Commands of --stdin, of the control socket and of --tell:\n%s",
                steeringHelp());
}

bool isSource(const std::string &option)
{
    return option == "--config" || option == "--camera" || option == "--fleet";
}

std::string readOptionWithText(const std::string &option, const char *text, Options &options)
{
    if (text == nullptr) {
        return option + " needs an argument";
    }
    if (option == "--card") {
        options.card = text;
    } else if (option == "--control") {
        options.controlPath = text;
    } else {
        options.sources.emplace_back(option, text);
    }
    return {};
}

std::string quoted(const std::string &word)
{
    return word.find(' ') == std::string::npos && !word.empty() ? word : "\"" + word + "\"";
}

std::string readOptions(int argc, char **argv, Options &options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string option = argv[i];
        if (option == "--card" || option == "--control" || isSource(option)) {
            std::string error = readOptionWithText(option, i + 1 < argc ? argv[i + 1] : nullptr, options);
            if (!error.empty()) {
                return error;
            }
            ++i;
        } else if (option == "--manage-addresses") {
            options.managesAddresses = true;
        } else if (option == "--stdin") {
            options.readsStdin = true;
        } else if (option == "--help") {
            options.isHelp = true;
        } else if (option == "--tell") {
            for (++i; i < argc; ++i) {
                options.command += (options.command.empty() ? "" : " ") + quoted(argv[i]);
            }
            return options.command.empty() ? "--tell needs a command" : "";
        } else {
            return "unknown argument '" + option + "'";
        }
    }
    return {};
}

std::vector<CameraSettings> readSource(const std::string &option, const std::string &text,
                                       const std::string &card, std::string &error)
{
    if (option == "--config") {
        return readCameraFile(text, card, error);
    }
    CameraSettings defaults;
    defaults.card = card;
    const auto words = splitWords(text);
    if (!words) {
        error = "a quote stays open in '" + text + "'";
        return {};
    }
    if (option == "--fleet") {
        return parseFleet(*words, defaults, error);
    }
    const auto camera = parseCamera(*words, defaults, error);
    return camera ? std::vector<CameraSettings>{*camera} : std::vector<CameraSettings>{};
}

std::string addCameras(const Options &options, CameraNetwork &network)
{
    std::vector<CameraSettings> cameras;
    for (const auto &[option, text] : options.sources) {
        std::string error;
        const auto found = readSource(option, text, options.card, error);
        if (!error.empty()) {
            return error;
        }
        cameras.insert(cameras.end(), found.begin(), found.end());
    }
    return network.add(cameras);
}

Descriptor openStopSignals()
{
    sigset_t stop;
    sigemptyset(&stop);
    sigaddset(&stop, SIGINT);
    sigaddset(&stop, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stop, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    return Descriptor(signalfd(-1, &stop, SFD_CLOEXEC));
}

int fail(const std::string &error)
{
    std::fprintf(stderr, "kel-sim-cameras: %s\n", error.c_str());
    return 2;
}

std::string resultText(const SteeringResult &result)
{
    if (!result.error.empty()) {
        return "error: " + result.error + "\n";
    }
    std::string text;
    for (const std::string &line : result.lines) {
        text += line + "\n";
    }
    return text + "ok\n";
}

void runUntilStopped(CameraNetwork &network, ControlChannel &channel, const Descriptor &stop,
                     const bool &isQuit)
{
    while (!isQuit) {
        std::vector<pollfd> entries{{stop.number(), POLLIN, 0}};
        network.appendPollEntries(entries);
        const std::size_t firstOfChannel = entries.size();
        channel.appendPollEntries(entries);
        poll(entries.data(), entries.size(), network.pollTimeout(Clock::now()));
        if (entries[0].revents != 0) {
            return;
        }
        network.run(entries.data() + 1, Clock::now());
        channel.run(entries.data() + firstOfChannel);
    }
}

int play(const Options &options)
{
    const Descriptor stop = openStopSignals();
    CameraNetwork network(options.managesAddresses);
    bool isQuit = false;
    ControlChannel channel([&](const std::string &line) {
        const SteeringResult result = steer(network, line, Clock::now());
        isQuit = isQuit || result.isQuit;
        return resultText(result);
    });

    std::string error = network.open();
    error = error.empty() ? addCameras(options, network) : error;
    if (error.empty() && !options.controlPath.empty()) {
        error = channel.listen(options.controlPath);
    }
    if (!error.empty()) {
        return fail(error);
    }
    if (options.readsStdin) {
        channel.readStdin();
    }
    std::printf("ready: %zu cameras\n", network.all().size());
    std::fflush(stdout);
    runUntilStopped(network, channel, stop, isQuit);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    Options options;
    const std::string error = readOptions(argc, argv, options);
    if (!error.empty()) {
        return fail(error + "; --help shows what there is");
    }
    if (options.isHelp) {
        printHelp();
        return 0;
    }
    if (!options.command.empty()) {
        const char *const path = std::getenv("KEL_SIM_CONTROL"); // NOLINT(concurrency-mt-unsafe): one thread
        return tellSimulator(options.controlPath.empty() && path != nullptr ? path : options.controlPath,
                             options.command);
    }
    return play(options);
}

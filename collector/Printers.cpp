// SPDX-License-Identifier: GPL-3.0-or-later
#include "collector/Printers.h"

#include "collector/Text.h"

#include <algorithm>
#include <array>

namespace collector {

namespace {

std::string HostOf(std::string_view address) {
    const std::string plain = WithoutLogin(address);
    const auto start = plain.find("://");
    if (start == std::string::npos)
        return {};
    const std::string rest = plain.substr(start + 3);
    if (rest.starts_with('['))
        return rest.substr(0, rest.find(']') + 1);
    return rest.substr(0, rest.find_first_of(":/?"));
}

std::vector<Printer> FromServersList(const std::string& text) {
    std::vector<Printer> printers;
    bool isInPrinter = false;
    for (std::string_view line : Split(text, '\n')) {
        line = Trimmed(line);
        const bool isOpening = line.starts_with("<Printer ") || line.starts_with("<DefaultPrinter ");
        if (isOpening && line.ends_with('>')) {
            const std::string_view name = Behind(line.substr(0, line.size() - 1), ' ');
            printers.emplace_back().name = name;
        }
        isInPrinter = isOpening || (isInPrinter && !line.starts_with("</"));
        if (!isInPrinter || printers.empty())
            continue;
        if (line.starts_with("MakeModel "))
            printers.back().driver = Behind(line, ' ');
        if (line.starts_with("DeviceURI "))
            printers.back().port = Behind(line, ' ');
    }
    return printers;
}

// "printer-make-and-model='HP LaserJet 1320'" among the options of a queue.
std::string ModelOf(const std::string& options) {
    constexpr std::string_view key = "printer-make-and-model=";
    const auto place = options.find(key);
    if (place == std::string::npos)
        return {};
    const std::string_view rest = std::string_view(options).substr(place + key.size());
    if (rest.starts_with('\''))
        return std::string(rest.substr(1, rest.find('\'', 1) - 1));
    return std::string(rest.substr(0, rest.find_first_of(" \n")));
}

// Lines read "device for NAME: ADDRESS". The models are asked for one by one, while time is left.
std::vector<Printer> AskServer(const Sources& sources) {
    constexpr std::string_view start = "device for ";
    std::vector<Printer> printers;
    const std::string text = sources.Run({"lpstat", "-v"}, std::chrono::seconds(5));
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    for (const std::string_view line : Split(text, '\n')) {
        const auto colon = line.find(": ");
        if (!line.starts_with(start) || colon == std::string_view::npos)
            continue;
        const std::string name(line.substr(start.size(), colon - start.size()));
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        // A name can't begin with "-" on a server that keeps to its own rules; it is no option here.
        const bool isAskable = left > std::chrono::milliseconds(0) && !name.starts_with('-');
        Printer& printer = printers.emplace_back();
        printer.name = name;
        printer.port = Trimmed(line.substr(colon + 1));
        if (isAskable)
            printer.driver = ModelOf(sources.Run({"lpoptions", "-p", name}, left));
    }
    return printers;
}

} // namespace

std::vector<Printer> Printers(const Sources& sources) {
    std::vector<Printer> printers = FromServersList(sources.Read("/etc/cups/printers.conf"));
    if (printers.empty() && sources.Exists("/run/cups/cups.sock"))
        printers = AskServer(sources);
    for (Printer& printer : printers) {
        printer.isLocal = IsLocalDevice(printer.port);
        printer.port = WithoutLogin(printer.port);
    }
    return printers;
}

bool IsLocalDevice(std::string_view address) {
    constexpr std::array<std::string_view, 9> localSchemes = {
        "usb", "parallel", "serial", "scsi", "file", "cups-pdf", "pipe", "hp", "hpfax",
    };
    constexpr std::array<std::string_view, 3> ownNames = {"localhost", "127.0.0.1", "[::1]"};
    if (address.starts_with('/'))
        return true;
    const std::string_view scheme = address.substr(0, address.find(':'));
    if (std::find(localSchemes.begin(), localSchemes.end(), scheme) != localSchemes.end())
        // The same driver serves cables and networks, and says so in the path.
        return !address.substr(scheme.size()).starts_with(":/net/");
    const std::string host = HostOf(address);
    return std::find(ownNames.begin(), ownNames.end(), host) != ownNames.end();
}

std::string WithoutLogin(std::string_view address) {
    const auto start = address.find("://");
    if (start == std::string_view::npos)
        return std::string(address);
    const std::string_view host = address.substr(start + 3, address.find('/', start + 3) - (start + 3));
    const auto at = host.rfind('@');
    if (at == std::string_view::npos)
        return std::string(address);
    return std::string(address.substr(0, start + 3)).append(address.substr(start + 3 + at + 1));
}

} // namespace collector

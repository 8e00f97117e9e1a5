// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/report/LocalPrinters.h"

#include "platform/ReplacedFile.h"
#include "platform/files.h"

#include <cups/cups.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <sstream>

namespace report {

namespace {

constexpr int kPatience = 3000; // milliseconds

struct CloseConnection {
    void operator()(http_t* connection) const { httpClose(connection); }
};
struct DeleteMessage {
    void operator()(ipp_t* message) const { ippDelete(message); }
};
using Connection = std::unique_ptr<http_t, CloseConnection>;
using Message = std::unique_ptr<ipp_t, DeleteMessage>;

/// The answer of this machine's server to a request that has no more to say than what is wanted; null where
/// there is none.
Message Ask(ipp_op_t operation, int count, const char* const* attributes) {
    if (!HasLocalServer())
        return nullptr;
    const Connection connection(
        httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, kPatience, nullptr));
    if (!connection)
        return nullptr;
    ipp_t* const request = ippNewRequest(operation);
    ippAddStrings(request, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", count, nullptr,
                  attributes);
    // The request goes with the answer.
    Message answer(cupsDoRequest(connection.get(), request, "/"));
    if (answer && ippGetStatusCode(answer.get()) > IPP_STATUS_OK_EVENTS_COMPLETE)
        return nullptr;
    return answer;
}

std::string TextOf(ipp_attribute_t* attribute) {
    const char* const text = ippGetString(attribute, 0, nullptr);
    return text == nullptr ? std::string() : std::string(text);
}

/// The user's own folder of printer settings; empty where the user has no home.
std::string OptionsFolder() {
    const char* const home = std::getenv("HOME"); // NOLINT(concurrency-mt-unsafe)
    return JoinPath(home == nullptr ? std::string() : std::string(home), ".cups");
}

std::string OptionsOfUser() {
    const std::string path = JoinPath(OptionsFolder(), "lpoptions");
    return FileExists(path) ? ReadFile(path) : std::string();
}

struct OptionsLine {
    std::string keyword;
    std::string printer;
    /// With the blank before them.
    std::string options;
};

OptionsLine Split(const std::string& line) {
    OptionsLine parts;
    std::istringstream words(line);
    words >> parts.keyword >> parts.printer;
    std::getline(words, parts.options);
    return parts;
}

} // namespace

bool IsLocalServer(std::string_view name) {
    if (name.starts_with('/'))
        return true;
    constexpr std::array<std::string_view, 3> kLoopback = {"localhost", "::1", "[::1]"};
    for (const std::string_view loopback : kLoopback)
        if (name == loopback)
            return true;
    // 127.0.0.0/8, and no name that only begins so.
    return name.starts_with("127.") && name.find_first_not_of("0123456789.") == std::string_view::npos;
}

bool HasLocalServer() {
    const char* const server = cupsServer();
    return server != nullptr && IsLocalServer(server);
}

std::vector<Printer> LocalPrinters() {
    constexpr std::array<const char*, 3> kWanted = {"printer-name", "printer-make-and-model", "device-uri"};
    const Message answer = Ask(IPP_OP_CUPS_GET_PRINTERS, static_cast<int>(kWanted.size()), kWanted.data());
    std::vector<Printer> printers;
    if (!answer)
        return printers;
    Printer printer;
    const auto take = [&] {
        if (!printer.deviceName.empty())
            printers.push_back(printer);
        printer = {};
    };
    for (ipp_attribute_t* attribute = ippFirstAttribute(answer.get()); attribute != nullptr;
         attribute = ippNextAttribute(answer.get())) {
        // An attribute without a name stands between two printers.
        const char* const text = ippGetName(attribute);
        const std::string_view name = text == nullptr ? std::string_view() : text;
        if (ippGetGroupTag(attribute) != IPP_TAG_PRINTER)
            take();
        else if (name == "printer-name")
            printer.deviceName = TextOf(attribute);
        else if (name == "printer-make-and-model")
            printer.driverName = TextOf(attribute);
        else if (name == "device-uri")
            printer.port = TextOf(attribute);
    }
    take();
    return printers;
}

std::string DefaultPrinterName() {
    for (const char* const variable : {"LPDEST", "PRINTER"})
        // "lp" means the system's default.
        if (const char* const name = std::getenv(variable); // NOLINT(concurrency-mt-unsafe)
            name != nullptr && *name != '\0' && std::string_view(name) != "lp")
            return name;
    std::istringstream lines(OptionsOfUser());
    for (std::string line; std::getline(lines, line);)
        if (const OptionsLine parts = Split(line); parts.keyword == "Default")
            return parts.printer;
    const char* const wanted = "printer-name";
    const Message answer = Ask(IPP_OP_CUPS_GET_DEFAULT, 1, &wanted);
    if (!answer)
        return {};
    ipp_attribute_t* const name = ippFindAttribute(answer.get(), "printer-name", IPP_TAG_NAME);
    return name == nullptr ? std::string() : TextOf(name);
}

std::string WithDefaultPrinter(std::string_view options, std::string_view name) {
    std::string others;
    std::string ownOptions;
    std::istringstream lines{std::string(options)};
    for (std::string line; std::getline(lines, line);) {
        const OptionsLine parts = Split(line);
        if (parts.printer == name)
            ownOptions = parts.options;
        else if (parts.keyword == "Default" && !parts.options.empty())
            others += "Dest " + parts.printer + parts.options + "\n";
        else if (parts.keyword != "Default")
            others += line + "\n";
    }
    return others + "Default " + std::string(name) + ownOptions + "\n";
}

void SetUsersDefaultPrinter(const std::string& name) {
    const std::string folder = OptionsFolder();
    const std::string options = WithDefaultPrinter(OptionsOfUser(), name);
    std::error_code ignored;
    if (std::filesystem::create_directory(folder, ignored))
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, ignored);
    ReplacedFile file(JoinPath(folder, "lpoptions"));
    file.Write(options);
    file.Commit();
}

} // namespace report

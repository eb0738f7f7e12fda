// brevant uuid [--braces] [--count N] [--json]: new random UUIDs in lower case, one a line, wrapped in
// braces when asked; --json prints a JSON list of them.
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "BrevantCocoaExtensions/dates/BVUtilities.hpp"
#include "Command.hpp"

namespace brevant {

namespace {

struct UuidOptions {
    bool braces = false;
    unsigned count = 1;
    bool json = false;
};

int run(const UuidOptions& options) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    std::string lines;
    for (unsigned i = 0; i < options.count; ++i) {
        const std::string uuid = bv::BVUtilities::generatedUUIDWithBraces(options.braces).toUtf8();
        list.push_back(uuid);
        lines += uuid + "\n";
    }
    return writeOutput(options.json ? list.dump(2) + "\n" : lines) ? kExitSuccess : kExitFailure;
}

void install(CLI::App& app, int* exitCode) {
    auto* command = app.add_subcommand("uuid", "Print new random UUIDs in lower case");
    auto options = std::make_shared<UuidOptions>();
    command->add_flag("--braces", options->braces, "wrap each UUID in { and }");
    command->add_option("--count,-n", options->count, "how many UUIDs to print (default 1)")
        ->check(CLI::Range(1u, 1000000u));
    command->add_flag("--json", options->json, "print a JSON list");
    command->callback([options, exitCode] { *exitCode = run(*options); });
}

}  // namespace

const RegisterCommand kUuidCommand("uuid", install);

}  // namespace brevant

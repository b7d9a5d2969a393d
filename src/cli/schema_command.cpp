#include <CLI/CLI.hpp>
#include <iostream>

#include "cli/command_error.h"
#include "cli/commands.h"
#include "outputs/schema_reference/json_schema.h"
#include "outputs/schema_reference/schema_markdown.h"
#include "outputs/schema_reference/schema_text.h"

namespace command {

namespace {

constexpr const char* kSchemaExample =
    "Examples:\n"
    "  kalvex schema\n"
    "  kalvex schema --format json > kalvex.schema.json\n\n"
    "Exit status: 0 printed, 2 wrong usage.";

int PrintSchema(const std::string& format) {
    if (format == "json") {
        outputs::WriteJsonSchema(std::cout);
        std::cout << '\n';
    } else if (format == "markdown") {
        outputs::WriteSchemaMarkdown(std::cout);
    } else {
        outputs::WriteSchemaText(std::cout);
    }
    return kExitDone;
}

}  // namespace

void AddSchemaCommand(CLI::App& program, int& exit_status) {
    CLI::App* const command =
        program.add_subcommand("schema", "Print which fields an inventory has");
    const auto format = std::make_shared<std::string>("text");
    command
        ->add_option("--format", *format,
                     "text for people, json is a JSON Schema of inventory --format json, markdown "
                     "a reference with the CIM properties")
        ->check(CLI::IsMember({"text", "json", "markdown"}).description(""))
        ->type_name("text|json|markdown")
        ->capture_default_str();
    command->footer(kSchemaExample);
    command->callback([format, &exit_status] { exit_status = PrintSchema(*format); });
}

}  // namespace command

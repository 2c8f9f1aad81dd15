#include "CliRegistry.h"

#include <algorithm>

namespace {
std::vector<CliCommand>& commands() {
    static std::vector<CliCommand> list;
    return list;
}
}  // namespace

bool CliRegistry::Add(const CliCommand& command) {
    auto& list = commands();
    list.push_back(command);
    std::sort(list.begin(), list.end(), [](const CliCommand& a, const CliCommand& b) {
        return std::string_view(a.name) < std::string_view(b.name);
    });
    return true;
}

const std::vector<CliCommand>& CliRegistry::All() {
    return commands();
}

const CliCommand* CliRegistry::Find(const QString& name) {
    for (const CliCommand& c : commands()) {
        if (name == QLatin1String(c.name)) return &c;
    }
    return nullptr;
}

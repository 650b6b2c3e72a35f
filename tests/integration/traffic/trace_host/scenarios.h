#pragma once

#include <functional>
#include <utility>
#include <vector>

/// What the host can be asked to do, by subject. No name stands twice.
namespace trace_host {

using Scenarios = std::vector<std::pair<const char*, std::function<void()>>>;

Scenarios requestScenarios();
Scenarios responseScenarios();
Scenarios redirectScenarios();
Scenarios failureScenarios();
Scenarios lettingGoScenarios();
Scenarios uploadScenarios();
Scenarios tlsScenarios();
Scenarios threadingScenarios();

}  // namespace trace_host

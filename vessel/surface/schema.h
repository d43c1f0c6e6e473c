// The vocabulary as texts for other programs: JSON Schema of requests and results, and the tables themselves.
#pragma once

#include <string>

namespace tarvane::vessel {

// JSON Schema, draft 2020-12. What a schema accepts may still have faults: what depends on several keys is not in it.
std::string input_schema();
std::string result_schema();
// All that the tables say about keys, results and checks.
std::string vocabulary();

} // namespace tarvane::vessel

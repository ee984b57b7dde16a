#pragma once

#include <string>

namespace kestrova
{

/// What packaging/completion.bash looks words up in, for bash: the verbs and the options of each
/// command, and the options that take a value.
std::string CompletionTables();

} // namespace kestrova

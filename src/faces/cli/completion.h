#pragma once

#include <string>

namespace kestrova
{

/// What packaging/completion.bash and completion.zsh look words up in: the verbs and the options of
/// each command, and the options that take a value.
std::string CompletionTables();

/// The same for fish, as its own commands over the functions of packaging/completion.fish.
std::string CompletionForFish();

} // namespace kestrova

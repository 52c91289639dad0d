#pragma once

#include <optional>

namespace Vantry::Platform {

// What a status query says about a design command.
enum CommandState : int
{
    NotSupported = 0,
    Disabled = 1,
    Enabled = 3,
    Latched = 7, // enabled and on: the selection is bold, the element is locked ...
    Ninched = 11 // the selection mixes several values
};

// The state a raw status number stands for; nothing for a number that is none of them.
[[nodiscard]] constexpr std::optional<CommandState> commandStateFromInt(int value)
{
    switch (value) {
    case NotSupported:
    case Disabled:
    case Enabled:
    case Latched:
    case Ninched:
        return static_cast<CommandState>(value);
    default:
        return std::nullopt;
    }
}

} // namespace Vantry::Platform

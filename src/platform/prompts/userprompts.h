#pragma once

#include <VantryHTMLEditor/UserPrompts.h>

namespace Vantry::Platform {

// The prompts are public so that hosts can answer them; the editor's units know them here.
using Vantry::UserPrompts;
using Vantry::WidgetPrompts;

} // namespace Vantry::Platform

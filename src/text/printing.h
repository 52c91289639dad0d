#pragma once

#include "platform/designsurface.h"
#include "platform/prompts/userprompts.h"

#include <QString>

#include <functional>

namespace Vantry::Text {

// Prints the design view's page: the user picks printer and options in the platform's
// print dialog, whose defaults apply otherwise.
class Printing
{
public:
    Printing(Platform::DesignSurface &surface, std::function<Platform::UserPrompts &()> prompts);

    // False when there is no document, the user cancels or the job fails.
    bool printPage();

private:
    Platform::DesignSurface &m_surface;
    std::function<Platform::UserPrompts &()> m_prompts;
};

} // namespace Vantry::Text

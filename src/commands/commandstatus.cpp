#include "commands/commandstatus.h"

#include "commands/commandsink.h"

namespace Vantry::Commands {

namespace {

class UnansweredStatus final : public CommandStatusSource
{
public:
    StatusSnapshot queryStatus(const QList<int> &) override { return {}; }
};

} // namespace

CommandState CommandStatusSource::commandState(int commandId)
{
    return queryStatus({commandId}).states.value(commandId, NotSupported);
}

CommandStatusSource &noStatusSource()
{
    static UnansweredStatus source;
    return source;
}

} // namespace Vantry::Commands

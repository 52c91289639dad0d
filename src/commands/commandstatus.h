#pragma once

#include "platform/commandstate.h"

#include <QHash>
#include <QList>
#include <QString>

#include <functional>

namespace Vantry::Commands {

using Platform::CommandState;

// The surface's answer to one status query.
struct StatusSnapshot
{
    // False when the surface could not answer; nothing below is known then.
    bool answered = false;
    // CommandState per command asked for; a command missing here is not supported.
    QHash<int, CommandState> states;
    // Filled when the get-font-name command was asked for and is enabled or latched.
    QString fontName;
    // Likewise for get-font-size: the HTML size 1 to 7, or below 1 for none.
    int fontSize = 0;
};

// Where the status of design commands comes from: the design surface answers for many
// commands in one round trip.
class CommandStatusSource
{
public:
    virtual ~CommandStatusSource() = default;
    virtual StatusSnapshot queryStatus(const QList<int> &commandIds) = 0;
    // The same question without waiting; done runs once with the answer, at once by
    // default.
    virtual void requestStatus(
        const QList<int> &commandIds, std::function<void(const StatusSnapshot &)> done)
    {
        done(queryStatus(commandIds));
    }

    // The state of one command; not supported when the surface cannot say.
    CommandState commandState(int commandId);
};

// A source that never answers, for an editor whose surface has not been connected yet.
CommandStatusSource &noStatusSource();

} // namespace Vantry::Commands

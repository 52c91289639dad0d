#pragma once

#include "commands/commandsink.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>

namespace Vantry::Platform {
class DesignSurface;
}

namespace Vantry::Commands {

class FontControls;
class ToolbarButtons;
class ToolbarModel;

// The surface's answer to one status query.
struct StatusSnapshot
{
    // False when the surface could not answer; nothing below is known then.
    bool answered = false;
    // The state of each command asked for; a command missing here is not supported.
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

// The design surface's own answers, the font name and size included, in one round trip.
class SurfaceStatusSource final : public CommandStatusSource
{
public:
    explicit SurfaceStatusSource(Platform::DesignSurface &surface)
        : m_surface(surface)
    { }

    StatusSnapshot queryStatus(const QList<int> &commandIds) override;
    void requestStatus(
        const QList<int> &commandIds, std::function<void(const StatusSnapshot &)> done) override;

private:
    Platform::DesignSurface &m_surface;
};

// Brings the toolbar up to date after the design surface's display changed, within the
// host's permissions, and tells the host what it found.
class SelectionState : public QObject
{
    Q_OBJECT

public:
    SelectionState(ToolbarModel &model, ToolbarButtons &buttons, FontControls &fonts,
        std::function<bool()> designViewActive, QObject *parent = nullptr);
    ~SelectionState() override;

    void setStatusSource(CommandStatusSource *source);

    // The commands one refresh asks about: every button's status command, then the font
    // name and size.
    static QList<int> queriedCommands();

    void refresh();
    // A refresh that asks without waiting and brings the toolbar up to date when the answer
    // comes: the way to follow the document's notifications. A later refresh supersedes an
    // answer still on its way.
    void requestRefresh();

Q_SIGNALS:
    // Once per tracked button in list order, then for "FontName" and "FontSize".
    void stateChanged(const QString &commandName, bool enabled, bool selected);
    // For "FontName" and "FontSize".
    void textChanged(const QString &commandName, const QString &value);

private:
    void refreshButton(const QString &key, int statusCommand, const StatusSnapshot &snapshot);
    void refreshFont(const StatusSnapshot &snapshot);
    void apply(const StatusSnapshot &snapshot);

    ToolbarModel &m_model;
    ToolbarButtons &m_buttons;
    FontControls &m_fonts;
    std::function<bool()> m_designViewActive;
    CommandStatusSource *m_source;
    quint64 m_refreshes = 0;
};

} // namespace Vantry::Commands

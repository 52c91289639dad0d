#pragma once

#include "commands/commandstatus.h"

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

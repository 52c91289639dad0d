#include "commands/selectionstate.h"

#include "commands/commandsink.h"
#include "commands/fontcontrols.h"
#include "commands/toolbarbuilder.h"
#include "commands/toolbarmodel.h"
#include "platform/designsurface.h"

#include <QAction>
#include <QPointer>

namespace Vantry::Commands {

StatusSnapshot SurfaceStatusSource::queryStatus(const QList<int> &commandIds)
{
    StatusSnapshot snapshot;
    QHash<int, QVariant> values;
    snapshot.states = m_surface.queryStatus(commandIds, &values);
    snapshot.answered = !m_surface.lastCallFailed();
    if (!snapshot.answered)
        return snapshot;
    snapshot.fontName = values.value(DesignCommand::GetFontName).toString();
    snapshot.fontSize = values.value(DesignCommand::GetFontSize).toInt();
    return snapshot;
}

void SurfaceStatusSource::requestStatus(
    const QList<int> &commandIds, std::function<void(const StatusSnapshot &)> done)
{
    m_surface.requestStatus(commandIds,
        [done = std::move(done)](bool answered, const QHash<int, CommandState> &states,
            const QHash<int, QVariant> &values) {
            StatusSnapshot snapshot;
            snapshot.states = states;
            snapshot.answered = answered;
            if (answered) {
                snapshot.fontName = values.value(DesignCommand::GetFontName).toString();
                snapshot.fontSize = values.value(DesignCommand::GetFontSize).toInt();
            }
            done(snapshot);
        });
}

SelectionState::SelectionState(ToolbarModel &model, ToolbarButtons &buttons, FontControls &fonts,
    std::function<bool()> designViewActive, QObject *parent)
    : QObject(parent)
    , m_model(model)
    , m_buttons(buttons)
    , m_fonts(fonts)
    , m_designViewActive(std::move(designViewActive))
    , m_source(&noStatusSource())
{ }

SelectionState::~SelectionState() = default;

void SelectionState::setStatusSource(CommandStatusSource *source)
{
    m_source = source ? source : &noStatusSource();
}

QList<int> SelectionState::queriedCommands()
{
    QList<int> ids = ToolbarModel::statusCommands();
    ids << DesignCommand::GetFontName << DesignCommand::GetFontSize;
    return ids;
}

void SelectionState::refresh()
{
    if (m_designViewActive && !m_designViewActive())
        return;
    ++m_refreshes;
    // One round trip for the whole toolbar; a refresh runs on every caret move.
    apply(m_source->queryStatus(queriedCommands()));
}

void SelectionState::requestRefresh()
{
    if (m_designViewActive && !m_designViewActive())
        return;
    const quint64 ticket = ++m_refreshes;
    const QPointer<SelectionState> self(this);
    m_source->requestStatus(queriedCommands(), [self, ticket](const StatusSnapshot &snapshot) {
        if (!self || ticket != self->m_refreshes)
            return;
        if (self->m_designViewActive && !self->m_designViewActive())
            return;
        self->apply(snapshot);
    });
}

void SelectionState::apply(const StatusSnapshot &snapshot)
{
    for (const ToolbarModel::StateEntry &entry : ToolbarModel::stateEntries())
        refreshButton(QString(entry.key), entry.statusCommand, snapshot);
    refreshFont(snapshot);
}

void SelectionState::refreshButton(
    const QString &key, int statusCommand, const StatusSnapshot &snapshot)
{
    QAction *button = m_buttons.button(key);
    const bool allowed = m_model.isAllowed(key);

    if (statusCommand == 0) {
        // Nothing to ask the surface: the host's permission decides. "ZOrder" has no
        // command at all and keeps whatever state it has.
        if (button && key != QLatin1String("ZOrder"))
            button->setEnabled(allowed);
        Q_EMIT stateChanged(key, button && button->isEnabled(), button && button->isChecked());
        return;
    }

    // A failed query is this entry's failure: the button keeps its state, the host hears
    // nothing.
    if (!snapshot.answered)
        return;

    bool enabled = false;
    bool pressed = m_model.latched(key).value_or(false);
    if (allowed) {
        const CommandState state = snapshot.states.value(statusCommand, NotSupported);
        enabled = state >= Enabled;
        pressed = state == Latched;
        m_model.setLatched(key, pressed);
        if (button)
            button->setChecked(pressed);
    }
    // A button the host switched off stays off whatever the document says.
    if (button)
        button->setEnabled(enabled);
    Q_EMIT stateChanged(key, enabled, pressed);
}

void SelectionState::refreshFont(const StatusSnapshot &snapshot)
{
    if (!snapshot.answered)
        return;

    const CommandState nameState = snapshot.states.value(DesignCommand::GetFontName, NotSupported);
    QString name;
    if (nameState == Enabled || nameState == Latched) {
        name = snapshot.fontName;
        m_fonts.showFontName(name);
    } else if (nameState == Ninched) {
        // Several faces under the selection: none of them is the selection's.
        m_fonts.showFontName(QString());
    }
    Q_EMIT stateChanged(QStringLiteral("FontName"), nameState >= Enabled, nameState == Latched);
    Q_EMIT textChanged(QStringLiteral("FontName"), name);

    const CommandState sizeState = snapshot.states.value(DesignCommand::GetFontSize, NotSupported);
    QString size;
    if (sizeState == Enabled || sizeState == Latched) {
        if (snapshot.fontSize >= 1)
            size = QString::number(snapshot.fontSize);
        m_fonts.showFontSize(size);
    } else if (sizeState == Ninched) {
        m_fonts.showFontSize(QString());
    }
    Q_EMIT stateChanged(QStringLiteral("FontSize"), sizeState >= Enabled, sizeState == Latched);
    Q_EMIT textChanged(QStringLiteral("FontSize"), size);
}

} // namespace Vantry::Commands

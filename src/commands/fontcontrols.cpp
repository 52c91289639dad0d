#include "commands/fontcontrols.h"

#include "commands/commandsink.h"
#include "commands/commandstatus.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>

namespace Vantry::Commands {

namespace {

class IdleSink final : public CommandSink
{
public:
    bool execute(int, const QVariant &) override { return false; }
};

QComboBox *makeCombo(QWidget *parent, const QString &name, const QStringList &entries)
{
    auto *combo = new QComboBox(parent);
    combo->setObjectName(name);
    combo->setEditable(true);
    // What the user types is applied, never collected into the list.
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->addItems(entries);
    combo->setCurrentIndex(-1);
    return combo;
}

} // namespace

CommandSink &noCommandSink()
{
    static IdleSink sink;
    return sink;
}

FontControls::FontControls(QWidget *comboParent, Hooks hooks, QObject *parent)
    : QObject(parent)
    , m_hooks(std::move(hooks))
    , m_status(&noStatusSource())
    , m_sink(&noCommandSink())
    , m_fontCombo(makeCombo(comboParent, QStringLiteral("FontCombo"), faceNames()))
    , m_fontSizeCombo(makeCombo(comboParent, QStringLiteral("FontSizeCombo"), sizeNames()))
{
    connect(m_fontCombo, &QComboBox::activated, this, &FontControls::fontChosen);
    connect(m_fontSizeCombo, &QComboBox::activated, this, &FontControls::fontSizeChosen);
    m_fontCombo->lineEdit()->installEventFilter(this);
    m_fontSizeCombo->lineEdit()->installEventFilter(this);
}

FontControls::~FontControls() = default;

const QStringList &FontControls::faceNames()
{
    static const QStringList names{QStringLiteral("Times New Roman"), QStringLiteral("Arial"),
        QStringLiteral("Tahoma"), QStringLiteral("Courier"), QStringLiteral("Verdana"),
        QStringLiteral("Wingdings")};
    return names;
}

const QStringList &FontControls::sizeNames()
{
    static const QStringList sizes{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
        QStringLiteral("4"), QStringLiteral("5"), QStringLiteral("6"), QStringLiteral("7")};
    return sizes;
}

void FontControls::setStatusSource(CommandStatusSource *source)
{
    m_status = source ? source : &noStatusSource();
}

void FontControls::setCommandSink(CommandSink *sink)
{
    m_sink = sink ? sink : &noCommandSink();
}

bool FontControls::apply(int commandId, const QVariant &value)
{
    if (!m_hooks.isDocumentReady || !m_hooks.isDocumentReady())
        return false;
    if (!m_hooks.designViewActive || !m_hooks.designViewActive())
        return false;
    if (m_status->commandState(commandId) < Enabled)
        return false;
    return m_sink->execute(commandId, value);
}

bool FontControls::applyFontName(const QVariant &name)
{
    return apply(DesignCommand::SetFontName, name);
}

bool FontControls::applyFontSize(const QVariant &size)
{
    return apply(DesignCommand::SetFontSize, size);
}

bool FontControls::applyFontColor(const QVariant &colour)
{
    return apply(DesignCommand::SetForeColor, colour);
}

bool FontControls::chosen(bool applied) const
{
    if (m_hooks.returnFocus)
        m_hooks.returnFocus();
    return applied;
}

bool FontControls::fontChosen(int index)
{
    if (index < 0 || index >= faceNames().size())
        return chosen(false);
    return chosen(applyFontName(faceNames().at(index)));
}

bool FontControls::fontSizeChosen(int index)
{
    if (index < 0 || index >= sizeNames().size())
        return chosen(false);
    return chosen(applyFontSize(sizeNames().at(index)));
}

bool FontControls::fontEntered()
{
    return chosen(applyFontName(m_fontCombo->currentText()));
}

bool FontControls::fontSizeEntered()
{
    return chosen(applyFontSize(m_fontSizeCombo->currentText()));
}

void FontControls::showFontName(const QString &name)
{
    m_fontCombo->setCurrentIndex(m_fontCombo->findText(name, Qt::MatchFixedString));
    m_fontCombo->setEditText(name);
}

void FontControls::showFontSize(const QString &size)
{
    m_fontSizeCombo->setCurrentIndex(m_fontSizeCombo->findText(size));
    m_fontSizeCombo->setEditText(size);
}

bool FontControls::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            if (watched == m_fontCombo->lineEdit()) {
                fontEntered();
                return true;
            }
            if (watched == m_fontSizeCombo->lineEdit()) {
                fontSizeEntered();
                return true;
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace Vantry::Commands

#include "commands/toolbarbuilder.h"

#include "commands/toolbarmodel.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QIcon>
#include <QKeySequence>
#include <QPointer>
#include <QToolBar>
#include <QWidgetAction>

namespace Vantry::Commands {

namespace {

// Room the two font combo boxes take on the formatting row, in twips.
constexpr int fontComboWidthTwips = 2000;
constexpr int fontSizeComboWidthTwips = 750;

struct ButtonEntry
{
    const char *key; // nullptr: a separator
    const char *icon;
    const char *toolTip;
    QKeyCombination shortcut = {};
    // Toggle buttons show a pressed state.
    bool checkable = false;
    QKeyCombination alternateShortcut = {};
};

constexpr ButtonEntry separator{nullptr, nullptr, nullptr};

// The keys are those the executor dispatches on; "uploadimage" and "InsertTable" are
// spelled as it expects.
const std::array<QList<ButtonEntry>, 3> &rowLayout()
{
    static const std::array<QList<ButtonEntry>, 3> layout{
        QList<ButtonEntry>{
            {"Cut", "edit-cut", "Cut", Qt::CTRL | Qt::Key_X},
            {"Copy", "edit-copy", "Copy", Qt::CTRL | Qt::Key_C},
            {"Paste", "edit-paste", "Paste", Qt::CTRL | Qt::Key_V},
            separator,
            {"UnDo", "edit-undo", "Undo", Qt::CTRL | Qt::Key_Z},
            {"ReDo", "edit-redo", "Redo", Qt::CTRL | Qt::Key_Y, false,
                Qt::CTRL | Qt::SHIFT | Qt::Key_Z},
            separator,
            {"Hyperlink", "insert-link", "Insert or edit a hyperlink", Qt::CTRL | Qt::Key_K},
            {"InsertImage", "insert-image", "Insert or edit an image"},
            {"uploadimage", "upload-media", "Upload an image"},
            {"InsertFlash", "application-x-shockwave-flash", "Insert a Flash movie"},
            separator,
            {"SpellCheck", "tools-check-spelling", "Check spelling"},
            {"PageProperties", "document-properties", "Page properties"},
            separator,
            {"Border", "format-border-set-all", "Show table borders", {}, true},
            {"Details", "view-visible", "Show hidden elements", {}, true},
            separator,
            {"Absolute", "transform-move", "Set Position Attribute To Absolute", {}, true},
            {"Lock", "object-locked", "Lock the element in place", {}, true},
            {"ZOrder", "object-order-raise", "Stacking order"},
            {"SnapToGrid", "snap", "Snap to grid", {}, true},
        },
        QList<ButtonEntry>{
            {"Font", nullptr, "Font"},
            {"FontSize", nullptr, "Font size"},
            separator,
            {"Bold", "format-text-bold", "Bold", Qt::CTRL | Qt::Key_B, true},
            {"Italic", "format-text-italic", "Italic", Qt::CTRL | Qt::Key_I, true},
            {"Underline", "format-text-underline", "Underline", Qt::CTRL | Qt::Key_U, true},
            separator,
            {"ForeColor", "format-text-color", "Text colour"},
            {"BackColor", "format-fill-color", "Background colour"},
            separator,
            {"LeftAlign", "format-justify-left", "Align left", {}, true},
            {"CenterAlign", "format-justify-center", "Centre", {}, true},
            {"RightAlign", "format-justify-right", "Align right", {}, true},
            separator,
            {"Numbers", "format-list-ordered", "Numbered list", {}, true},
            {"Bullets", "format-list-unordered", "Bulleted list", {}, true},
            {"Outdent", "format-indent-less", "Decrease indent"},
            {"Indent", "format-indent-more", "Increase indent"},
        },
        QList<ButtonEntry>{
            {"InsertTable", "insert-table", "Insert a table"},
            separator,
            // A new row goes above the caret's row, a new column left of its column.
            {"InsertRow", "edit-table-insert-row-above", "Insert a row above"},
            {"DeleteRow", "edit-table-delete-row", "Delete the row"},
            {"InsertColumn", "edit-table-insert-column-left", "Insert a column to the left"},
            {"DeleteColumn", "edit-table-delete-column", "Delete the column"},
            separator,
            {"InsertCell", "edit-table-insert-cell", "Insert a cell"},
            {"DeleteCell", "edit-table-delete-cell", "Delete the cell"},
            {"MergeCells", "edit-table-cell-merge", "Merge the cells"},
            {"SplitCells", "edit-table-cell-split", "Split the cell"},
        },
    };
    return layout;
}

QString lookupKey(const QString &key)
{
    return key.toLower();
}

// The icons every editor of the process shares: an SVG icon parses its file when made and
// renders it on first paint, which each further editor would otherwise do again. The
// application owns them, so that none outlives it.
class IconCache : public QObject
{
public:
    using QObject::QObject;
    QHash<QLatin1String, QIcon> icons;
};

QIcon toolbarIcon(const char *name)
{
    static QPointer<IconCache> cache;
    if (!cache)
        cache = new IconCache(QCoreApplication::instance());
    QIcon &icon = cache->icons[QLatin1String(name)];
    if (icon.isNull())
        icon = QIcon(
            QStringLiteral(":/vantry/icons/") + QLatin1String(name) + QStringLiteral(".svg"));
    return icon;
}

} // namespace

ToolbarButtons::ToolbarButtons(const std::array<QToolBar *, 3> &rows, QComboBox *fontCombo,
    QComboBox *fontSizeCombo, QWidget *shortcutScope, QObject *parent)
    : QObject(parent)
    , m_rows(rows)
{
    for (int toolbar = 0; toolbar < static_cast<int>(m_rows.size()); ++toolbar)
        build(toolbar, fontCombo, fontSizeCombo, shortcutScope);
}

ToolbarButtons::~ToolbarButtons() = default;

void ToolbarButtons::build(
    int toolbar, QComboBox *fontCombo, QComboBox *fontSizeCombo, QWidget *scope)
{
    QToolBar *row = m_rows[static_cast<std::size_t>(toolbar)];
    row->setIconSize(QSize(16, 16));
    row->setToolButtonStyle(Qt::ToolButtonIconOnly);
    const qreal dpi = row->logicalDpiX();

    for (const ButtonEntry &entry : rowLayout()[static_cast<std::size_t>(toolbar)]) {
        if (!entry.key) {
            row->addSeparator();
            continue;
        }
        const QString key = QLatin1String(entry.key);
        const QString text = QLatin1String(entry.toolTip);
        QAction *button = nullptr;
        if (key == QLatin1String("Font") || key == QLatin1String("FontSize")) {
            QComboBox *combo = key == QLatin1String("Font") ? fontCombo : fontSizeCombo;
            const int twips = combo == fontCombo ? fontComboWidthTwips : fontSizeComboWidthTwips;
            combo->setFixedWidth(twipsToPixels(twips, dpi));
            combo->setToolTip(text);
            button = row->addWidget(combo);
        } else {
            button = row->addAction(toolbarIcon(entry.icon), text);
            button->setCheckable(entry.checkable);
            QString toolTip = text;
            if (entry.shortcut != QKeyCombination()) {
                QList<QKeySequence> shortcuts{QKeySequence(entry.shortcut)};
                if (entry.alternateShortcut != QKeyCombination())
                    shortcuts.append(QKeySequence(entry.alternateShortcut));
                button->setShortcuts(shortcuts);
                button->setShortcutContext(Qt::WidgetWithChildrenShortcut);
                // The row is no ancestor of the document; the editor is.
                scope->addAction(button);
                toolTip += QStringLiteral(" (")
                    + shortcuts.first().toString(QKeySequence::NativeText) + QStringLiteral(")");
            }
            button->setToolTip(toolTip);
            connect(button, &QAction::triggered, this,
                [this, button](bool checked) { onTriggered(button, checked); });
        }
        button->setObjectName(key);
        button->setData(key);
        m_buttons.append(button);
        // A later row wins, as the host's lookups expect.
        m_byKey.insert(lookupKey(key), button);
        m_rowOfKey.insert(lookupKey(key), toolbar);
    }
}

void ToolbarButtons::onTriggered(QAction *button, bool checked)
{
    // A toggle button shows the document's state, not the click: the executor or the
    // next selection refresh sets it.
    if (button->isCheckable())
        button->setChecked(!checked);
    Q_EMIT buttonClicked(keyOf(button));
}

QToolBar *ToolbarButtons::row(int toolbar) const
{
    if (toolbar < 0 || toolbar >= static_cast<int>(m_rows.size()))
        return nullptr;
    return m_rows[static_cast<std::size_t>(toolbar)];
}

QAction *ToolbarButtons::button(const QString &key) const
{
    return m_byKey.value(lookupKey(key));
}

int ToolbarButtons::holdingRow(const QString &key) const
{
    return m_rowOfKey.value(lookupKey(key), -1);
}

QString ToolbarButtons::keyOf(const QAction *button)
{
    return button ? button->data().toString() : QString();
}

QStringList ToolbarButtons::rowKeys(int toolbar)
{
    QStringList keys;
    if (toolbar < 0 || toolbar >= static_cast<int>(rowLayout().size()))
        return keys;
    for (const ButtonEntry &entry : rowLayout()[static_cast<std::size_t>(toolbar)]) {
        if (entry.key)
            keys.append(QLatin1String(entry.key));
    }
    return keys;
}

void ToolbarButtons::setToolbarEnabled(bool enabled)
{
    // The font combo boxes are buttons here too: their actions carry them along.
    for (QAction *button : std::as_const(m_buttons))
        button->setEnabled(enabled);
}

} // namespace Vantry::Commands

#include "dialogs/dialogwidgets.h"

#include "dialogs/dialogrules.h"

#include <VantryHTMLEditor/UserPrompts.h>

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace Vantry::Dialogs {

namespace {

// Whether a key types a character into a box, as opposed to moving or ending the dialog.
// Backspace types one (8); Delete, Tab, Enter, Escape and shortcuts do not.
bool typesCharacter(const QKeyEvent *event)
{
    if (event->text().isEmpty() || (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)))
        return false;
    switch (event->key()) {
    case Qt::Key_Delete:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        return false;
    default:
        return true;
    }
}

class NumberEdit : public QLineEdit
{
public:
    NumberEdit(NumberBox *box, QWidget *parent)
        : QLineEdit(parent)
        , m_box(box)
    { }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
            m_box->stepBy(event->key() == Qt::Key_Up ? 1 : -1);
            return;
        }
        if (typesCharacter(event) && !CheckEnterNumber(event->text().at(0).unicode())) {
            event->accept();
            return;
        }
        QLineEdit::keyPressEvent(event);
    }

    void wheelEvent(QWheelEvent *event) override
    {
        if (event->angleDelta().y() != 0)
            m_box->stepBy(event->angleDelta().y() > 0 ? 1 : -1);
        event->accept();
    }

private:
    NumberBox *m_box;
};

QToolButton *arrowButton(Qt::ArrowType arrow, QWidget *parent)
{
    auto *button = new QToolButton(parent);
    button->setArrowType(arrow);
    button->setFocusPolicy(Qt::NoFocus);
    button->setAutoRepeat(true);
    button->setFixedSize(18, 12);
    return button;
}

QToolButton *pickerButton(const QString &toolTip, QWidget *parent)
{
    auto *button = new QToolButton(parent);
    button->setText(QStringLiteral("..."));
    button->setToolTip(toolTip);
    button->setAccessibleName(toolTip);
    return button;
}

} // namespace

NumberBox::NumberBox(int minimum, int maximum, QWidget *parent)
    : QWidget(parent)
    , m_edit(new NumberEdit(this, this))
    , m_minimum(minimum)
    , m_maximum(maximum)
{
    // Pasted text keeps only what could have been typed.
    connect(m_edit, &QLineEdit::textEdited, this, [this](const QString &text) {
        QString digits;
        for (const QChar c : text) {
            if (CheckEnterNumber(c.unicode()))
                digits += c;
        }
        if (digits != text)
            m_edit->setText(digits);
    });
    auto *up = arrowButton(Qt::UpArrow, this);
    auto *down = arrowButton(Qt::DownArrow, this);
    connect(up, &QToolButton::clicked, this, [this] { stepBy(1); });
    connect(down, &QToolButton::clicked, this, [this] { stepBy(-1); });
    auto *arrows = new QVBoxLayout;
    arrows->setSpacing(0);
    arrows->addWidget(up);
    arrows->addWidget(down);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(1);
    layout->addWidget(m_edit);
    layout->addLayout(arrows);
    setFocusProxy(m_edit);
}

QString NumberBox::text() const
{
    return m_edit->text();
}

void NumberBox::setText(const QString &text)
{
    m_edit->setText(text);
}

void NumberBox::stepBy(int steps)
{
    bool numeric = false;
    const int current = m_edit->text().toInt(&numeric);
    const int next = numeric ? qBound(m_minimum, current + steps, m_maximum) : m_minimum;
    m_edit->setText(QString::number(next));
}

ColorField::ColorField(PromptsAccess prompts, QWidget *parent)
    : QWidget(parent)
    , m_prompts(std::move(prompts))
    , m_combo(new QComboBox(this))
{
    m_combo->setEditable(true);
    m_combo->setInsertPolicy(QComboBox::NoInsert);
    m_combo->addItems({QString(), QStringLiteral("#000000"), QStringLiteral("#FFFFFF"),
        QStringLiteral("#C0C0C0"), QStringLiteral("#808080"), QStringLiteral("#FF0000"),
        QStringLiteral("#00FF00"), QStringLiteral("#0000FF"), QStringLiteral("#FFFF00")});
    m_combo->setMinimumContentsLength(9);
    auto *button = pickerButton(QStringLiteral("Pick Color"), this);
    connect(button, &QToolButton::clicked, this, &ColorField::pickColor);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_combo, 1);
    layout->addWidget(button);
    setFocusProxy(m_combo);
}

QString ColorField::text() const
{
    return m_combo->currentText();
}

void ColorField::setText(const QString &text)
{
    m_combo->setEditText(text);
}

void ColorField::pickColor()
{
    // The picker opens on the colour the field shows, black when it shows none.
    const QColor shown = QColor::fromString(text().trimmed());
    const std::optional<QColor> color = m_prompts().color(shown.isValid() ? shown : Qt::black);
    if (!color) {
        setText(QString());
        return;
    }
    const quint32 number
        = quint32(color->red()) | quint32(color->green()) << 8 | quint32(color->blue()) << 16;
    setText(ColorToHtml(number));
}

FileField::FileField(PromptsAccess prompts, const QString &pickerTitle, QWidget *parent)
    : QWidget(parent)
    , m_prompts(std::move(prompts))
    , m_title(pickerTitle)
    , m_edit(new QLineEdit(this))
{
    auto *button = pickerButton(pickerTitle, this);
    connect(button, &QToolButton::clicked, this, &FileField::pickFile);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_edit, 1);
    layout->addWidget(button);
    setFocusProxy(m_edit);
}

void FileField::pickFile()
{
    const QString picked = m_prompts().openFileName(m_title,
        m_filter.isEmpty()
            ? QStringLiteral("Images (*.gif *.jpg *.jpeg *.png *.bmp *.svg *.webp);;All Files (*)")
            : m_filter,
        m_directory);
    if (!picked.isEmpty())
        m_edit->setText(picked);
}

QComboBox *unitList(QWidget *parent)
{
    auto *list = new QComboBox(parent);
    list->addItems({QString(unitPercent), QString(unitPixels)});
    list->setCurrentIndex(0);
    return list;
}

void showDimension(NumberBox *box, QComboBox *units, const QString &value)
{
    const Dimension dimension = splitDimension(value);
    box->setText(dimension.number);
    if (!value.isEmpty())
        units->setCurrentText(dimension.percent ? QString(unitPercent) : QString(unitPixels));
}

QString collectDimension(const NumberBox *box, const QComboBox *units)
{
    return joinDimension(box->text(), units->currentText());
}

QWidget *dimensionRow(NumberBox *box, QComboBox *units, QWidget *parent)
{
    auto *row = new QWidget(parent);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(box, 1);
    layout->addWidget(units);
    return row;
}

QComboBox *choiceList(const QStringList &entries, QWidget *parent)
{
    auto *list = new QComboBox(parent);
    list->addItem(QString());
    list->addItems(entries);
    return list;
}

void showChoice(QComboBox *list, const QString &value)
{
    int index = list->findText(value, Qt::MatchFixedString);
    if (index < 0) {
        list->addItem(value);
        index = list->count() - 1;
    }
    // The document's own spelling goes back, not the entry's.
    list->setItemText(index, value);
    list->setCurrentIndex(index);
}

namespace {

void collectTabStops(QWidget *widget, QList<QWidget *> &chain)
{
    if (widget->focusPolicy() & Qt::TabFocus) {
        chain.append(widget);
        return;
    }
    for (QWidget *child : widget->findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
        collectTabStops(child, chain);
}

} // namespace

void setTabChain(const QList<QWidget *> &fields)
{
    QList<QWidget *> chain;
    for (QWidget *field : fields)
        collectTabStops(field, chain);
    for (qsizetype i = 1; i < chain.size(); ++i)
        QWidget::setTabOrder(chain.at(i - 1), chain.at(i));
}

QWidget *okCancelButtons(QDialog *dialog)
{
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    return buttons;
}

} // namespace Vantry::Dialogs

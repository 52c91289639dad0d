#include "dialogs/fontdialog.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

namespace Vantry::Dialogs {

namespace {

QFont fontFor(const FontChoice &choice, const QFont &fallback)
{
    QFont font = fallback;
    if (!choice.family.isEmpty())
        font.setFamily(choice.family);
    const int points = pointSizeForHtmlSize(choice.htmlSize);
    font.setPointSize(points > 0 ? points : pointSizeForHtmlSize(3));
    font.setBold(choice.bold);
    font.setItalic(choice.italic);
    font.setUnderline(choice.underline);
    return font;
}

} // namespace

FontDialog::FontDialog(const FontChoice &initial, QWidget *parent)
    : QDialog(parent)
    , m_initial(initial)
    , m_color(initial.color)
{
    setWindowTitle(QStringLiteral("Font"));

    m_shown = fontFor(initial, font());
    // The chooser is embedded: its own buttons and window frame give way to ours.
    m_fonts = new QFontDialog(m_shown, this);
    m_fonts->setOptions(QFontDialog::NoButtons | QFontDialog::DontUseNativeDialog);
    m_fonts->setWindowFlags(Qt::Widget);
    m_fonts->setCurrentFont(m_shown);
    // Escape or Enter inside the chooser ends the embedded dialog only, which would leave
    // an empty frame behind: they end this one.
    connect(m_fonts, &QDialog::rejected, this, &QDialog::reject);
    connect(m_fonts, &QDialog::accepted, this, &QDialog::accept);
    // HTML formatting here has no strike-out; a box that does nothing is not shown.
    for (QCheckBox *box : m_fonts->findChildren<QCheckBox *>()) {
        if (box->text().remove(QLatin1Char('&')) == QLatin1String("Strikeout"))
            box->hide();
    }

    m_colorButton = new QPushButton(QStringLiteral("&Colour..."), this);
    m_colorButton->setObjectName(QStringLiteral("cmdColour"));
    m_colorButton->setAutoDefault(false);
    setColor(m_color);
    connect(m_colorButton, &QPushButton::clicked, this, &FontDialog::pickColor);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *colorRow = new QHBoxLayout;
    colorRow->addWidget(new QLabel(QStringLiteral("Text colour:"), this));
    colorRow->addWidget(m_colorButton);
    colorRow->addStretch();

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_fonts);
    layout->addLayout(colorRow);
    layout->addWidget(buttons);
}

void FontDialog::setColor(const QColor &color)
{
    m_color = color;
    QPixmap swatch(16, 16);
    swatch.fill(color.isValid() ? color : QColor(Qt::transparent));
    m_colorButton->setIcon(QIcon(swatch));
    m_colorButton->setToolTip(
        color.isValid() ? color.name(QColor::HexRgb).toUpper() : QStringLiteral("Mixed colours"));
}

void FontDialog::pickColor()
{
    const QColor picked = QColorDialog::getColor(
        m_color.isValid() ? m_color : QColor(Qt::black), this, QStringLiteral("Text Colour"));
    if (picked.isValid())
        setColor(picked);
}

FontChoice FontDialog::choice() const
{
    const QFont chosen = m_fonts->currentFont();
    FontChoice result;
    result.family = chosen.family() == m_shown.family() ? m_initial.family : chosen.family();
    result.htmlSize = chosen.pointSizeF() == m_shown.pointSizeF()
        ? m_initial.htmlSize
        : htmlSizeForPointSize(chosen.pointSizeF());
    result.color = m_color;
    result.bold = chosen.weight() >= QFont::DemiBold;
    result.italic = chosen.italic();
    result.underline = chosen.underline();
    return result;
}

} // namespace Vantry::Dialogs

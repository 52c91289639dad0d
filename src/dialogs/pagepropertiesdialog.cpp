#include "dialogs/pagepropertiesdialog.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QVBoxLayout>

namespace Vantry::Dialogs {

namespace {

using V = PagePropertiesValues;

QString V::*const colorValues[5] = {
    &V::BackgroundColor, &V::TextColor, &V::LinkColor, &V::VisitedLinkColor, &V::ActiveLinkColor};
QString V::*const marginValues[4]
    = {&V::LeftMargin, &V::TopMargin, &V::RightMargin, &V::BottomMargin};

} // namespace

PagePropertiesDialog::PagePropertiesDialog(PromptsAccess prompts, QWidget *parent)
    : QDialog(parent)
    , m_title(new QLineEdit(this))
    , m_bgImage(new FileField(prompts, QStringLiteral("Pick Image"), this))
{
    setWindowTitle(QStringLiteral("Page Properties"));
    m_title->setObjectName(QStringLiteral("txtTitle"));
    m_title->setMinimumWidth(280);
    m_bgImage->setObjectName(QStringLiteral("txtBGImage"));

    auto *page = new QGroupBox(QStringLiteral("Page"), this);
    auto *pageForm = new QFormLayout(page);
    pageForm->addRow(QStringLiteral("T&itle:"), m_title);
    pageForm->addRow(QStringLiteral("Background &image:"), m_bgImage);

    auto *colors = new QGroupBox(QStringLiteral("Colors"), this);
    auto *colorForm = new QFormLayout(colors);
    const QString colorCaptions[5]
        = {QStringLiteral("&Background:"), QStringLiteral("&Text:"), QStringLiteral("&Link:"),
            QStringLiteral("&Visited link:"), QStringLiteral("&Active link:")};
    for (int i = 0; i < 5; ++i) {
        m_colors[i] = new ColorField(prompts, colors);
        m_colors[i]->setObjectName(QStringLiteral("txtColor%1").arg(i));
        colorForm->addRow(colorCaptions[i], m_colors[i]);
    }

    auto *margins = new QGroupBox(QStringLiteral("Margins (pixels)"), this);
    auto *marginForm = new QFormLayout(margins);
    const QString marginCaptions[4] = {QStringLiteral("L&eft:"), QStringLiteral("T&op:"),
        QStringLiteral("&Right:"), QStringLiteral("Botto&m:")};
    const char *marginNames[4] = {"txtLM", "txtTM", "txtRM", "txtBM"};
    for (int i = 0; i < 4; ++i) {
        m_margins[i] = new NumberBox(0, 999, margins);
        m_margins[i]->setObjectName(QLatin1String(marginNames[i]));
        marginForm->addRow(marginCaptions[i], m_margins[i]);
    }

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(page);
    layout->addWidget(colors);
    layout->addWidget(margins);
    QWidget *buttons = okCancelButtons(this);
    layout->addWidget(buttons);
    setTabChain({m_title, m_bgImage, m_colors[0], m_colors[1], m_colors[2], m_colors[3],
        m_colors[4], m_margins[0], m_margins[1], m_margins[2], m_margins[3], buttons});
    m_title->setFocus();
}

void PagePropertiesDialog::setValues(const PagePropertiesValues &values)
{
    m_values = values;
    m_title->setText(values.Title);
    m_bgImage->setText(values.BackgroundImage);
    m_bgImage->setDirectory(values.ImageDirectory);
    for (int i = 0; i < 5; ++i)
        m_colors[i]->setText(values.*colorValues[i]);
    for (int i = 0; i < 4; ++i)
        m_margins[i]->setText(values.*marginValues[i]);
}

PagePropertiesValues PagePropertiesDialog::values() const
{
    PagePropertiesValues values = m_values;
    values.Title = m_title->text();
    values.BackgroundImage = m_bgImage->text();
    for (int i = 0; i < 5; ++i)
        values.*colorValues[i] = m_colors[i]->text();
    for (int i = 0; i < 4; ++i)
        values.*marginValues[i] = m_margins[i]->text();
    values.Cancel = false;
    return values;
}

} // namespace Vantry::Dialogs

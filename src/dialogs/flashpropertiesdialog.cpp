#include "dialogs/flashpropertiesdialog.h"

#include "dialogs/dialogrules.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>

#include <utility>

namespace Vantry::Dialogs {

namespace {

void showFlag(QCheckBox *box, int value)
{
    box->setChecked(value != 0);
}

} // namespace

FlashPropertiesDialog::FlashPropertiesDialog(PromptsAccess prompts, QWidget *parent)
    : QDialog(parent)
    , m_movieURL(new FileField(prompts, QStringLiteral("Pick Flash File"), this))
    , m_quality(
          choiceList({QStringLiteral("low"), QStringLiteral("autolow"), QStringLiteral("autohigh"),
                         QStringLiteral("medium"), QStringLiteral("high"), QStringLiteral("best")},
              this))
    , m_windowMode(choiceList(
          {QStringLiteral("window"), QStringLiteral("opaque"), QStringLiteral("transparent")},
          this))
    , m_play(new QCheckBox(QStringLiteral("&Play on load"), this))
    , m_loop(new QCheckBox(QStringLiteral("&Loop"), this))
    , m_showMenu(new QCheckBox(QStringLiteral("Show &menu"), this))
    , m_deviceFont(new QCheckBox(QStringLiteral("Use &device fonts"), this))
    , m_embedMovie(new QCheckBox(QStringLiteral("&Embed movie"), this))
    , m_bgColor(new ColorField(prompts, this))
{
    setWindowTitle(QStringLiteral("Flash Movie Properties"));
    // The names hosts and scripts know the controls by.
    const std::pair<QWidget *, const char *> names[] = {{m_movieURL, "txtMovieURL"},
        {m_quality, "cboQuality"}, {m_windowMode, "cboWindowMode"}, {m_play, "chkPlay"},
        {m_loop, "chkLoop"}, {m_showMenu, "chkShowMenu"}, {m_deviceFont, "chkDeviceFont"},
        {m_embedMovie, "chkEmbedMovie"}, {m_bgColor, "txtbgColor"}};
    for (const auto &[widget, name] : names)
        widget->setObjectName(QLatin1String(name));
    m_movieURL->setFilter(QStringLiteral("Flash Movies (*.swf);;All Files (*)"));

    auto *form = new QFormLayout;
    form->addRow(QStringLiteral("Mo&vie:"), m_movieURL);
    form->addRow(QStringLiteral("&Quality:"), m_quality);
    form->addRow(QStringLiteral("&Window mode:"), m_windowMode);
    form->addRow(QStringLiteral("&Background color:"), m_bgColor);
    auto *player = new QGroupBox(QStringLiteral("Player"), this);
    auto *flags = new QVBoxLayout(player);
    for (QCheckBox *box : {m_play, m_loop, m_showMenu, m_deviceFont, m_embedMovie})
        flags->addWidget(box);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(player);
    QWidget *buttons = okCancelButtons(this);
    layout->addWidget(buttons);
    setTabChain({m_movieURL, m_quality, m_windowMode, m_bgColor, m_play, m_loop, m_showMenu,
        m_deviceFont, m_embedMovie, buttons});
    m_movieURL->setFocus();
    resize(440, sizeHint().height());
}

void FlashPropertiesDialog::setValues(const FlashPropertiesValues &values)
{
    m_values = values;
    m_movieURL->setText(values.MovieURL);
    m_movieURL->setDirectory(values.ImageDirectory);
    showChoice(m_quality, values.Quality);
    showChoice(m_windowMode, values.WindowMode);
    showFlag(m_play, values.Play);
    showFlag(m_loop, values.Loop);
    showFlag(m_showMenu, values.ShowMenu);
    showFlag(m_deviceFont, values.DeviceFont);
    showFlag(m_embedMovie, values.EmbedMovie);
    m_bgColor->setText(values.BGColor);
}

FlashPropertiesValues FlashPropertiesDialog::values() const
{
    FlashPropertiesValues values = m_values;
    values.MovieURL = m_movieURL->text();
    values.Quality = m_quality->currentText();
    values.WindowMode = m_windowMode->currentText();
    values.Play = ConvertBooleanToNumber(m_play->isChecked());
    values.Loop = ConvertBooleanToNumber(m_loop->isChecked());
    values.ShowMenu = ConvertBooleanToNumber(m_showMenu->isChecked());
    values.DeviceFont = ConvertBooleanToNumber(m_deviceFont->isChecked());
    values.EmbedMovie = ConvertBooleanToNumber(m_embedMovie->isChecked());
    values.BGColor = m_bgColor->text();
    values.Cancel = false;
    return values;
}

} // namespace Vantry::Dialogs

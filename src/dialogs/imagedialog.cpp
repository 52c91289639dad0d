#include "dialogs/imagedialog.h"

#include "dialogs/imagemarkup.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRadioButton>
#include <QTemporaryFile>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

namespace Vantry::Dialogs {

namespace {

using RollOver = ImageDialogValues::RollOver;

constexpr int previewSide = 160;
// Over, down and out, in the order of the fields.
const char *const imageCaptions[] = {"Over Image:", "Down Image:", "Out Image:"};
const char *const scriptCaptions[] = {"Over Script:", "Down Script:", "Out Script:"};
const char *const pickerTitles[]
    = {"Pick Mouse Over Image", "Pick Mouse Down Image", "Pick Mouse Out Image"};

QLineEdit *lineEditOf(FileField *field)
{
    return field->findChild<QLineEdit *>();
}

} // namespace

ImageDialog::ImageDialog(PromptsAccess prompts, QWidget *parent)
    : QDialog(parent)
    , m_source(new FileField(prompts, QStringLiteral("Pick Image"), this))
    , m_preview(new QLabel(this))
    , m_width(new NumberBox(0, 9999, this))
    , m_height(new NumberBox(0, 9999, this))
    , m_keepAspect(new QCheckBox(QStringLiteral("&Keep aspect ratio"), this))
    , m_vspace(new NumberBox(0, 999, this))
    , m_hspace(new NumberBox(0, 999, this))
    , m_align(choiceList(
          {QStringLiteral("left"), QStringLiteral("right"), QStringLiteral("top"),
              QStringLiteral("middle"), QStringLiteral("bottom"), QStringLiteral("absmiddle"),
              QStringLiteral("baseline"), QStringLiteral("texttop"), QStringLiteral("absbottom")},
          this))
    , m_border(new NumberBox(0, 99, this))
    , m_alt(new QLineEdit(this))
    , m_linkPrefix(new QComboBox(this))
    , m_hyperlink(new QLineEdit(this))
    , m_target(choiceList({QStringLiteral("_blank"), QStringLiteral("_parent"),
                              QStringLiteral("_self"), QStringLiteral("_top")},
          this))
{
    setWindowTitle(QStringLiteral("Image Properties"));
    m_target->setEditable(true);
    m_linkPrefix->addItems(linkPrefixes());

    m_preview->setFixedSize(previewSide, previewSide);
    m_preview->setAlignment(Qt::AlignCenter);
    m_preview->setFrameShape(QFrame::StyledPanel);

    auto *picture = new QGroupBox(QStringLiteral("Picture"), this);
    auto *pictureForm = new QFormLayout(picture);
    pictureForm->addRow(QStringLiteral("&Source:"), m_source);
    pictureForm->addRow(QStringLiteral("&Width:"), m_width);
    pictureForm->addRow(QStringLiteral("&Height:"), m_height);
    pictureForm->addRow(QString(), m_keepAspect);
    pictureForm->addRow(QStringLiteral("&Alternative text:"), m_alt);

    auto *layoutBox = new QGroupBox(QStringLiteral("Layout"), this);
    auto *layoutForm = new QFormLayout(layoutBox);
    layoutForm->addRow(QStringLiteral("Al&ignment:"), m_align);
    layoutForm->addRow(QStringLiteral("&Vertical spacing:"), m_vspace);
    layoutForm->addRow(QStringLiteral("Hori&zontal spacing:"), m_hspace);
    layoutForm->addRow(QStringLiteral("&Border:"), m_border);

    auto *link = new QGroupBox(QStringLiteral("Hyperlink"), this);
    auto *linkForm = new QFormLayout(link);
    auto *address = new QWidget(link);
    auto *addressRow = new QHBoxLayout(address);
    addressRow->setContentsMargins(0, 0, 0, 0);
    addressRow->addWidget(m_linkPrefix);
    addressRow->addWidget(m_hyperlink, 1);
    linkForm->addRow(QStringLiteral("Add&ress:"), address);
    linkForm->addRow(QStringLiteral("&Target:"), m_target);

    auto *rollOver = new QGroupBox(QStringLiteral("Mouse roll-over"), this);
    auto *rollOverGrid = new QGridLayout(rollOver);
    auto *modes = new QButtonGroup(this);
    const char *const modeNames[] = {"&None", "I&mage", "S&cript"};
    auto *modeRow = new QHBoxLayout;
    for (int i = 0; i < 3; ++i) {
        m_modes[i] = new QRadioButton(QLatin1String(modeNames[i]), rollOver);
        modes->addButton(m_modes[i], i);
        modeRow->addWidget(m_modes[i]);
    }
    modeRow->addStretch();
    rollOverGrid->addLayout(modeRow, 0, 0, 1, 2);
    for (int i = 0; i < 3; ++i) {
        m_rollOver[i] = new FileField(prompts, QLatin1String(pickerTitles[i]), rollOver);
        m_rollOverLabels[i] = new QLabel(rollOver);
        m_rollOverLabels[i]->setBuddy(m_rollOver[i]);
        rollOverGrid->addWidget(m_rollOverLabels[i], i + 1, 0);
        rollOverGrid->addWidget(m_rollOver[i], i + 1, 1);
    }
    connect(modes, &QButtonGroup::idClicked, this,
        [this](int id) { setRollOver(static_cast<RollOver>(id)); });

    auto *left = new QVBoxLayout;
    left->addWidget(picture);
    left->addWidget(layoutBox);
    auto *right = new QVBoxLayout;
    right->addWidget(m_preview, 0, Qt::AlignHCenter);
    right->addWidget(link);
    auto *top = new QHBoxLayout;
    top->addLayout(left, 1);
    top->addLayout(right, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(rollOver);
    QWidget *buttons = okCancelButtons(this);
    layout->addWidget(buttons);
    setTabChain({m_source, m_width, m_height, m_keepAspect, m_alt, m_align, m_vspace, m_hspace,
        m_border, m_linkPrefix, m_hyperlink, m_target, m_modes[0], m_modes[1], m_modes[2],
        m_rollOver[0], m_rollOver[1], m_rollOver[2], buttons});

    connect(lineEditOf(m_source), &QLineEdit::editingFinished, this, &ImageDialog::LoadPic);
    connect(lineEditOf(m_source), &QLineEdit::textChanged, this, [this] {
        // A picked file arrives without editing; a typed one loads when the box is left.
        if (!lineEditOf(m_source)->hasFocus())
            LoadPic();
    });
    connect(m_width->lineEdit(), &QLineEdit::textChanged, this, [this] { keepAspectFrom(true); });
    connect(m_height->lineEdit(), &QLineEdit::textChanged, this, [this] { keepAspectFrom(false); });
    setRollOver(RollOver::None);
    m_source->setFocus();
}

ImageDialog::~ImageDialog() = default;

void ImageDialog::setRollOver(RollOver mode)
{
    const int index = static_cast<int>(mode);
    m_modes[index]->setChecked(true);
    const char *const *captions = mode == RollOver::Script ? scriptCaptions : imageCaptions;
    for (int i = 0; i < 3; ++i) {
        m_rollOverLabels[i]->setText(QLatin1String(captions[i]));
        m_rollOver[i]->setEnabled(mode != RollOver::None);
        // Scripts are typed; only images have a picker.
        if (auto *button = m_rollOver[i]->findChild<QToolButton *>())
            button->setVisible(mode == RollOver::Image);
    }
}

void ImageDialog::keepAspectFrom(bool widthChanged)
{
    if (m_syncing || !m_keepAspect->isChecked() || !m_pictureSize.isValid())
        return;
    NumberBox *changed = widthChanged ? m_width : m_height;
    NumberBox *other = widthChanged ? m_height : m_width;
    bool number = false;
    const int value = changed->text().toInt(&number);
    if (!number)
        return;
    const std::optional<int> kept = widthChanged
        ? keptAspect(value, m_pictureSize.width(), m_pictureSize.height())
        : keptAspect(value, m_pictureSize.height(), m_pictureSize.width());
    if (!kept)
        return;
    m_syncing = true;
    other->setText(QString::number(*kept));
    m_syncing = false;
}

void ImageDialog::showPicture(const QString &file)
{
    QImageReader reader(file);
    reader.setAutoTransform(true);
    const QImage image = reader.read();
    m_pictureSize = image.isNull() ? QSize() : image.size();
    if (image.isNull()) {
        m_preview->setPixmap({});
        m_preview->setText(file.isEmpty() ? QString() : QStringLiteral("No preview"));
        return;
    }
    m_preview->setPixmap(QPixmap::fromImage(image.scaled(
        previewSide - 4, previewSide - 4, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}

void ImageDialog::LoadPic()
{
    QString source = m_source->text().trimmed();
    if (!source.startsWith(QLatin1String("http"), Qt::CaseInsensitive)) {
        source.remove(QStringLiteral("file://"), Qt::CaseInsensitive);
        showPicture(source);
        return;
    }
    if (!m_network)
        m_network = new QNetworkAccessManager(this);
    QNetworkReply *reply = m_network->get(QNetworkRequest(QUrl(source)));
    m_preview->setPixmap({});
    m_preview->setText(QStringLiteral("Loading..."));
    connect(reply, &QNetworkReply::finished, this, [this, reply, source] {
        reply->deleteLater();
        // A later source took over while this one was on its way.
        if (m_source->text().trimmed() != source)
            return;
        auto download = std::make_unique<QTemporaryFile>();
        if (reply->error() != QNetworkReply::NoError || !download->open()
            || download->write(reply->readAll()) < 0 || !download->flush()) {
            m_pictureSize = QSize();
            m_preview->setText(QStringLiteral("No preview"));
            return;
        }
        m_download = std::move(download);
        showPicture(m_download->fileName());
    });
}

void ImageDialog::setValues(const ImageDialogValues &values)
{
    m_values = values;
    m_syncing = true;
    m_source->setDirectory(values.ImageDirectory);
    m_source->setText(values.Source);
    m_width->setText(values.Width);
    m_height->setText(values.Height);
    m_keepAspect->setChecked(values.KeepAspect);
    m_vspace->setText(values.VSpace);
    m_hspace->setText(values.HSpace);
    showChoice(m_align, values.Align);
    m_border->setText(values.Border);
    m_alt->setText(values.Alt);
    const SplitLink link = splitLinkPrefix(values.Hyperlink);
    if (!link.prefix.isEmpty())
        m_linkPrefix->setCurrentText(link.prefix);
    m_hyperlink->setText(link.rest);
    showChoice(m_target, values.Target);
    const QString rollOver[] = {values.SourceOver, values.SourceDown, values.SourceOut};
    for (int i = 0; i < 3; ++i) {
        m_rollOver[i]->setDirectory(values.ImageDirectory);
        m_rollOver[i]->setText(rollOver[i]);
    }
    setRollOver(values.MouseOverOption);
    m_syncing = false;
}

ImageDialogValues ImageDialog::values() const
{
    ImageDialogValues values = m_values;
    values.Source = m_source->text();
    values.Width = m_width->text();
    values.Height = m_height->text();
    values.KeepAspect = m_keepAspect->isChecked();
    values.VSpace = m_vspace->text();
    values.HSpace = m_hspace->text();
    values.Align = m_align->currentText();
    values.Border = m_border->text();
    values.Alt = m_alt->text();
    values.Hyperlink = joinLinkPrefix(m_linkPrefix->currentText(), m_hyperlink->text());
    values.Target = values.Hyperlink.isEmpty() ? QString() : m_target->currentText();
    for (int i = 0; i < 3; ++i) {
        if (m_modes[i]->isChecked())
            values.MouseOverOption = static_cast<RollOver>(i);
    }
    const bool rollOver = values.MouseOverOption != RollOver::None;
    values.SourceOver = rollOver ? m_rollOver[0]->text() : QString();
    values.SourceDown = rollOver ? m_rollOver[1]->text() : QString();
    values.SourceOut = rollOver ? m_rollOver[2]->text() : QString();
    values.Cancel = false;
    return values;
}

} // namespace Vantry::Dialogs

#include "dialogs/linkpropertiesdialog.h"

#include "dialogs/imagemarkup.h"

#include <VantryHTMLEditor/UserPrompts.h>

#include <QButtonGroup>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QRadioButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace Vantry::Dialogs {

namespace {

QComboBox *pageList(const QString &objectName, LinkListKind kind, QWidget *parent)
{
    auto *box = new QComboBox(parent);
    box->setObjectName(objectName);
    box->addItem(linkListPrompt(kind), 0);
    box->setMinimumContentsLength(28);
    return box;
}

QWidget *panel(const QString &objectName, QWidget *parent)
{
    auto *widget = new QWidget(parent);
    widget->setObjectName(objectName);
    return widget;
}

} // namespace

LinkPropertiesDialog::LinkPropertiesDialog(PromptsAccess prompts, QWidget *parent)
    : QDialog(parent)
    , m_prompts(prompts)
    , m_option(new QButtonGroup(this))
    , m_panels(new QStackedWidget(this))
    , m_prefix(new QComboBox(this))
    , m_url(new QLineEdit(this))
    , m_site(pageList(QStringLiteral("cbo_Site"), LinkListKind::Sites, this))
    , m_page(pageList(QStringLiteral("cboPageSection"), LinkListKind::Pages, this))
    , m_portalPage(pageList(QStringLiteral("cboPortalPage"), LinkListKind::PortalPages, this))
    , m_target(new QComboBox(this))
    , m_popup(new QLineEdit(this))
    , m_color(new ColorField(prompts, this))
    , m_decoration(choiceList({QStringLiteral("none"), QStringLiteral("underline"),
                                  QStringLiteral("overline"), QStringLiteral("line-through")},
          this))
{
    setWindowTitle(QStringLiteral("Link Properties"));
    m_siteAddresses.append(QString());
    m_pageAddresses.append(QString());
    m_portalAddresses.append(QString());

    auto *kinds = new QGroupBox(QStringLiteral("Link to"), this);
    auto *kindRow = new QHBoxLayout(kinds);
    const QString captions[] = {QStringLiteral("&Address"), QStringLiteral("&Content page"),
        QStringLiteral("P&ortal page")};
    for (int kind = 0; kind < 3; ++kind) {
        auto *button = new QRadioButton(captions[kind], kinds);
        button->setObjectName(QStringLiteral("opt_LinkOption%1").arg(kind));
        m_option->addButton(button, kind);
        kindRow->addWidget(button);
    }

    QWidget *addressPanel = panel(QStringLiteral("picControls"), m_panels);
    m_prefix->setObjectName(QStringLiteral("cbo_LinkPrefix"));
    // The last entry keeps any other address whole.
    for (const QString &prefix : linkPrefixes())
        m_prefix->addItem(prefix, prefix);
    m_prefix->addItem(QStringLiteral("(other)"), QString());
    m_url->setObjectName(QStringLiteral("txtLinkURL"));
    m_url->setMinimumWidth(280);
    auto *addressForm = new QFormLayout(addressPanel);
    auto *addressRow = new QHBoxLayout;
    addressRow->addWidget(m_prefix);
    addressRow->addWidget(m_url, 1);
    addressForm->addRow(QStringLiteral("Add&ress:"), addressRow);

    QWidget *pagesPanel = panel(QStringLiteral("picCMSPages"), m_panels);
    auto *pagesForm = new QFormLayout(pagesPanel);
    pagesForm->addRow(QStringLiteral("&Site:"), m_site);
    pagesForm->addRow(QStringLiteral("&Page:"), m_page);

    QWidget *portalPanel = panel(QStringLiteral("picPortalPages"), m_panels);
    auto *portalForm = new QFormLayout(portalPanel);
    portalForm->addRow(QStringLiteral("Portal pa&ge:"), m_portalPage);

    m_panels->addWidget(addressPanel);
    m_panels->addWidget(pagesPanel);
    m_panels->addWidget(portalPanel);

    m_target->setObjectName(QStringLiteral("cboTarget"));
    m_target->setEditable(true);
    m_target->setInsertPolicy(QComboBox::NoInsert);
    m_popup->setObjectName(QStringLiteral("txtPopup"));
    m_color->setObjectName(QStringLiteral("cboLinkColor"));
    m_decoration->setObjectName(QStringLiteral("cboDecloration"));
    auto *look = new QGroupBox(QStringLiteral("Link"), this);
    auto *lookForm = new QFormLayout(look);
    lookForm->addRow(QStringLiteral("&Target:"), m_target);
    lookForm->addRow(QStringLiteral("Pop-&up text:"), m_popup);
    lookForm->addRow(QStringLiteral("Co&lor:"), m_color);
    lookForm->addRow(QStringLiteral("&Decoration:"), m_decoration);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(kinds);
    layout->addWidget(m_panels);
    layout->addWidget(look);
    QWidget *buttons = okCancelButtons(this);
    buttons->setObjectName(QStringLiteral("btnButton"));
    layout->addWidget(buttons);
    setTabChain({m_option->button(0), m_option->button(1), m_option->button(2), m_prefix, m_url,
        m_site, m_page, m_portalPage, m_target, m_popup, m_color, m_decoration, buttons});

    connect(m_option, &QButtonGroup::idClicked, this, &LinkPropertiesDialog::setLinkOption);
    connect(m_site, &QComboBox::activated, this, [this] { loadPages(QString()); });
    connect(m_page, &QComboBox::activated, this,
        [this](int index) { takeAddress(m_pageAddresses, index); });
    connect(m_portalPage, &QComboBox::activated, this,
        [this](int index) { takeAddress(m_portalAddresses, index); });
    connect(m_url, &QLineEdit::textEdited, this, &LinkPropertiesDialog::recognisePrefix);
    setLinkOption(LinkPropertiesValues::LinkAddress);
}

void LinkPropertiesDialog::setLinkOption(int kind)
{
    if (kind < 0 || kind > 2)
        kind = LinkPropertiesValues::LinkAddress;
    m_option->button(kind)->setChecked(true);
    m_panels->setCurrentIndex(kind);
}

// Malformed text leaves the list as it was; the user is told which list and why.
void LinkPropertiesDialog::loadList(LinkListKind kind, QComboBox *box, QStringList *addresses,
    const QString &currentId, qint32 siteId)
{
    const QString xml = kind == LinkListKind::Sites ? m_values.ContentSites
        : kind == LinkListKind::Pages               ? m_values.ContentPages
                                                    : m_values.PortalPages;
    if (xml.trimmed().isEmpty())
        return;
    const LinkListLoad load = loadLinkList(kind, xml, currentId, siteId);
    if (!load.list) {
        m_prompts().information(load.error.message(kind));
        return;
    }
    box->clear();
    for (qsizetype i = 0; i < load.list->names.size(); ++i)
        box->addItem(load.list->names.at(i), load.list->ids.at(i));
    *addresses = load.list->addresses;
    box->setCurrentIndex(load.list->current);
}

void LinkPropertiesDialog::loadPages(const QString &currentId)
{
    const qint32 site = m_site->currentIndex() > 0 ? m_site->currentData().toInt() : 0;
    m_page->clear();
    m_page->addItem(linkListPrompt(LinkListKind::Pages), 0);
    m_pageAddresses = QStringList{QString()};
    if (m_site->currentIndex() > 0)
        loadList(LinkListKind::Pages, m_page, &m_pageAddresses, currentId, site);
}

void LinkPropertiesDialog::takeAddress(const QStringList &addresses, int index)
{
    if (index > 0)
        m_url->setText(addresses.value(index));
}

void LinkPropertiesDialog::recognisePrefix()
{
    const SplitLink typed = splitLinkPrefix(m_url->text());
    if (typed.prefix.isEmpty())
        return;
    m_prefix->setCurrentIndex(int(linkPrefixes().indexOf(typed.prefix)));
    m_url->setText(typed.rest);
}

void LinkPropertiesDialog::setValues(const LinkPropertiesValues &values)
{
    m_values = values;
    loadList(LinkListKind::Sites, m_site, &m_siteAddresses, values.SiteID);
    loadPages(values.PageID);
    loadList(LinkListKind::PortalPages, m_portalPage, &m_portalAddresses, values.PortalPageID);

    const SplitLink address = splitLinkPrefix(values.URL);
    const qsizetype known = linkPrefixes().indexOf(address.prefix);
    // A new address starts at the first prefix; one with none of them shows "(other)".
    m_prefix->setCurrentIndex(known >= 0 ? int(known)
            : values.URL.isEmpty()       ? 0
                                         : m_prefix->count() - 1);
    m_url->setText(address.rest);
    m_target->clear();
    m_target->addItem(QString());
    m_target->addItems(values.Targets);
    showChoice(m_target, values.Target);
    m_popup->setText(values.Popup);
    m_color->setText(values.LinkColor);
    showChoice(m_decoration, values.Decoration);
    setLinkOption(values.LinkOption);
}

LinkPropertiesValues LinkPropertiesDialog::values() const
{
    LinkPropertiesValues values = m_values;
    values.LinkOption = m_option->checkedId();
    values.SiteID.clear();
    values.PageID.clear();
    values.PortalPageID.clear();
    switch (values.LinkOption) {
    case LinkPropertiesValues::LinkContentPage:
        values.SiteID = QString::number(m_site->currentData().toInt());
        values.PageID = QString::number(m_page->currentData().toInt());
        values.URL = m_pageAddresses.value(m_page->currentIndex());
        break;
    case LinkPropertiesValues::LinkPortalPage:
        values.PortalPageID = QString::number(m_portalPage->currentData().toInt());
        values.URL = m_portalAddresses.value(m_portalPage->currentIndex());
        break;
    default:
        values.URL = joinLinkPrefix(m_prefix->currentData().toString(), m_url->text().trimmed());
        break;
    }
    values.Target = m_target->currentText().trimmed();
    values.Popup = m_popup->text();
    values.LinkColor = m_color->text();
    values.Decoration = m_decoration->currentText();
    values.Cancel = false;
    return values;
}

void LinkPropertiesDialog::accept()
{
    const QString message = linkValidationMessage(m_option->checkedId(), m_site->currentIndex(),
        m_page->currentIndex(), m_portalPage->currentIndex());
    if (!message.isEmpty()) {
        m_prompts().information(message);
        return;
    }
    QDialog::accept();
}

} // namespace Vantry::Dialogs

#pragma once

#include "dialogs/dialogwidgets.h"
#include "dialogs/linklists.h"

#include <VantryHTMLEditor/LinkDialogValues.h>

#include <QDialog>

class QButtonGroup;
class QComboBox;
class QLineEdit;
class QStackedWidget;

namespace Vantry::Dialogs {

// LinkProperties: an address, a page of a content site or a portal page, with its target,
// pop-up text, colour and decoration.
class LinkPropertiesDialog : public QDialog
{
public:
    LinkPropertiesDialog(PromptsAccess prompts, QWidget *parent = nullptr);

    // Loads the host's lists (telling the user of any that cannot be read) and shows values.
    void setValues(const LinkPropertiesValues &values);
    LinkPropertiesValues values() const;

    // OK: stays open with a message while the chosen kind lacks its page.
    void accept() override;

    void setLinkOption(int kind);
    QComboBox *sites() const { return m_site; }
    QComboBox *pages() const { return m_page; }
    QComboBox *portalPages() const { return m_portalPage; }
    QLineEdit *address() const { return m_url; }
    QComboBox *prefix() const { return m_prefix; }

private:
    void loadList(LinkListKind kind, QComboBox *box, QStringList *addresses,
        const QString &currentId, qint32 siteId = 0);
    void loadPages(const QString &currentId);
    void takeAddress(const QStringList &addresses, int index);
    void recognisePrefix();

    PromptsAccess m_prompts;
    LinkPropertiesValues m_values;
    QButtonGroup *m_option;
    QStackedWidget *m_panels;
    QComboBox *m_prefix;
    QLineEdit *m_url;
    QComboBox *m_site;
    QComboBox *m_page;
    QComboBox *m_portalPage;
    QStringList m_siteAddresses;
    QStringList m_pageAddresses;
    QStringList m_portalAddresses;
    QComboBox *m_target;
    QLineEdit *m_popup;
    ColorField *m_color;
    QComboBox *m_decoration;
};

} // namespace Vantry::Dialogs

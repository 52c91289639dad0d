#pragma once

#include <VantryHTMLEditor/vantryhtmleditor_export.h>

#include <QMetaType>
#include <QPointer>
#include <QString>

namespace Vantry {

// An element of the editor's document, as GetSelectedElementObject hands it out. It
// refers to the element while the document it came from stays loaded; a null element, or
// one whose document is gone, reads as empty texts and ignores writes.
class VANTRYHTMLEDITOR_EXPORT HTMLElement
{
    Q_GADGET
    Q_PROPERTY(bool isNull READ isNull)
    Q_PROPERTY(QString tagName READ tagName)
    Q_PROPERTY(QString outerHTML READ outerHTML WRITE setOuterHTML)
    Q_PROPERTY(QString innerHTML READ innerHTML WRITE setInnerHTML)

public:
    HTMLElement();

    bool isNull() const;
    QString tagName() const;
    QString outerHTML() const;
    void setOuterHTML(const QString &html);
    QString innerHTML() const;
    void setInnerHTML(const QString &html);
    Q_INVOKABLE QString getAttribute(const QString &name) const;
    Q_INVOKABLE void setAttribute(const QString &name, const QString &value);
    Q_INVOKABLE void removeAttribute(const QString &name);
    // Null for the document's root element.
    Q_INVOKABLE Vantry::HTMLElement parentElement() const;

    // The same element of the same document.
    bool operator==(const HTMLElement &other) const;

protected:
    // An element of the document loaded in surface; the editor makes these.
    HTMLElement(QObject *surface, int id, int generation);

private:
    QPointer<QObject> m_surface;
    int m_id = 0;
    int m_generation = -1;
};

} // namespace Vantry

Q_DECLARE_METATYPE(Vantry::HTMLElement)

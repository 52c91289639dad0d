#pragma once

#include <QObject>
#include <QRectF>
#include <QStringList>
#include <QString>
#include <QVariant>

class QWidget;

namespace Vantry::Platform {

class DesignSurface;

// A document element as seen from C++: a handle into the surface's current document.
// A handle taken from an earlier document fails cleanly when used.
struct Element
{
    int id = 0;
    int generation = -1;

    bool isNull() const { return id == 0; }
    QVariant toVariant() const;
    static Element fromVariant(const QVariant &value);
};

// The editing surface of the design view: an HTML document in editing mode with a
// document object model, and notifications of what the user does in it.
//
// Every call is synchronous to the caller. A call that fails (no document yet, an engine
// that does not answer in time, a stale element) returns its default and records the
// failure in lastError(); notifications may arrive while a call waits.
class DesignSurface : public QObject
{
    Q_OBJECT

public:
    ~DesignSurface() override;

    virtual QWidget *widget() const = 0;

    // True once the first document has completed loading.
    virtual bool isReady() const = 0;
    bool lastCallFailed() const { return !m_lastError.isEmpty(); }
    QString lastError() const { return m_lastError; }

    // The whole document as HTML. Text handed in is parsed the way a browser parses it;
    // a text that wraps a whole document in other markup keeps the document's head in
    // the head and puts the wrapper around the body content.
    virtual bool setDocumentHTML(const QString &html) = 0;
    virtual QString documentHTML() = 0;
    virtual QString bodyInnerHTML() = 0;
    virtual QString bodyInnerText() = 0;
    // Replaces the body's content; element handles of the document become stale.
    virtual bool setBodyInnerHTML(const QString &html) = 0;

    virtual QString title() = 0;
    virtual bool setTitle(const QString &title) = 0;

    virtual QList<Element> elementsByName(const QString &name) = 0;
    virtual QList<Element> elementsByTagName(const QString &tagName) = 0;
    virtual Element head() = 0;
    virtual Element body() = 0;
    virtual Element createElement(const QString &tagName) = 0;
    virtual bool appendChild(const Element &parent, const Element &child) = 0;
    virtual QString tagName(const Element &element) = 0;
    virtual QString attribute(const Element &element, const QString &name) = 0;
    virtual bool setAttribute(const Element &element, const QString &name,
                              const QString &value) = 0;
    virtual QString outerHTML(const Element &element) = 0;
    // Position and size in the view, in CSS pixels.
    virtual QRectF boundingRect(const Element &element) = 0;
    // The address of every style sheet the document links, as written.
    virtual QStringList styleSheetHrefs() = 0;

    // Scroll offsets of the document's scrolling element, in CSS pixels.
    virtual QPoint scrollPosition() = 0;
    virtual bool setScrollLeft(int left) = 0;
    virtual bool setScrollTop(int top) = 0;

    // Edit state (true) or browse state (false).
    virtual bool setEditable(bool editable) = 0;
    virtual bool isEditable() = 0;
    virtual bool setScrollBarsVisible(bool visible) = 0;
    // The URL relative addresses resolve against while editing; never part of what is
    // read back as the body, and only in front of the HTML start tag in the document.
    virtual bool setBaseUrl(const QString &url) = 0;
    virtual bool refresh() = 0;
    // Makes the engine's formatting commands write elements rather than style attributes.
    virtual bool useElementFormatting() = 0;
    virtual bool focusDocument() = 0;

Q_SIGNALS:
    void documentComplete();
    void displayChanged();
    void contentChanged();
    void keyDown(int keyCode, int shift);
    void mouseDown(int button, int shift, double x, double y);
    void mouseMove(int button, int shift, double x, double y);
    void mouseUp(int button, int shift, double x, double y);
    void clicked();
    void doubleClicked();
    void contextMenuRequested(const QPoint &position);

protected:
    explicit DesignSurface(QObject *parent = nullptr);
    void setLastError(const QString &error) { m_lastError = error; }

private:
    QString m_lastError;
};

// The surface this build uses. It and its widget are children of parent, which owns them.
DesignSurface *createDesignSurface(QWidget *parent);

} // namespace Vantry::Platform

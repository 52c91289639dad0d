#pragma once

#include "platform/designsurface.h"
#include "platform/menutarget.h"
#include "platform/webengine/scriptbridge.h"

#include <QPoint>
#include <QVariantList>
#include <QVariantMap>

#include <functional>
#include <optional>

class QWebChannel;
class QWebEngineView;
class QWebEnginePage;

namespace Vantry::Platform {

class SurfaceNotifier;

// The design surface on QtWebEngine: a view whose page has the main world's JavaScript
// switched off, with the editing adapter in an isolated world.
class WebEngineDesignSurface : public DesignSurface, public MenuTargets
{
    Q_OBJECT

public:
    explicit WebEngineDesignSurface(QWidget *parent);
    ~WebEngineDesignSurface() override;

    QWidget *widget() const override;
    bool isReady() const override { return m_ready; }

    bool setDocumentHTML(const QString &html) override;
    QString documentHTML() override;
    QString bodyInnerHTML() override;
    QString bodyInnerText() override;
    bool setBodyInnerHTML(const QString &html) override;
    bool editBodyInnerHTML(const QString &html) override;
    QString title() override;
    bool setTitle(const QString &title) override;
    QList<Element> elementsByName(const QString &name) override;
    QList<Element> elementsByTagName(const QString &tagName) override;
    Element head() override;
    Element body() override;
    Element createElement(const QString &tagName) override;
    bool appendChild(const Element &parent, const Element &child) override;
    QString tagName(const Element &element) override;
    QString attribute(const Element &element, const QString &name) override;
    bool setAttribute(const Element &element, const QString &name, const QString &value) override;
    QString outerHTML(const Element &element) override;
    QRectF boundingRect(const Element &element) override;
    QStringList styleSheetHrefs() override;
    Element parentElement(const Element &element) override;
    QList<PathStep> elementPath(const Element &element) override;
    QString innerHTML(const Element &element) override;
    bool setInnerHTML(const Element &element, const QString &html) override;
    bool setOuterHTML(const Element &element, const QString &html) override;
    bool removeAttribute(const Element &element, const QString &name) override;
    QString styleProperty(const Element &element, const QString &name) override;
    bool setStyleProperty(
        const Element &element, const QString &name, const QString &value) override;
    ElementFields elementFields(
        const Element &element, const QStringList &attributes, const QStringList &styles) override;
    bool editElementFields(const Element &element, const QList<FieldEdit> &edits) override;
    TableParts tableParts(const Element &table) override;
    QList<StyleSheetInfo> styleSheets() override;
    bool addStyleSheet(const QString &href) override;
    AttributeList elementAttributes(const Element &element) override;
    QList<std::pair<QString, QString>> objectParams(const Element &object) override;
    bool setObjectParams(
        const Element &object, const QList<std::pair<QString, QString>> &params) override;
    QList<Element> images() override;
    QList<Element> scripts() override;
    SelectionType selectionType() override;
    TextRange selectionRange() override;
    bool clearSelection() override;
    bool selectElement(const Element &element) override;
    TextRange bodyRange() override;
    bool isControlRange(const TextRange &range) override;
    int controlCount(const TextRange &range) override;
    Element controlItem(const TextRange &range, int index) override;
    Element rangeParentElement(const TextRange &range) override;
    QString rangeText(const TextRange &range) override;
    bool setRangeText(const TextRange &range, const QString &text) override;
    QString rangeHtmlText(const TextRange &range) override;
    bool pasteHTML(const TextRange &range, const QString &html) override;
    int moveRange(const TextRange &range, TextUnit unit, int count) override;
    int moveRangeStart(const TextRange &range, TextUnit unit, int count) override;
    int moveRangeEnd(const TextRange &range, TextUnit unit, int count) override;
    bool collapseRange(const TextRange &range, bool toStart) override;
    TextRange duplicateRange(const TextRange &range) override;
    QString rangeBookmark(const TextRange &range) override;
    bool moveRangeToBookmark(const TextRange &range, const QString &bookmark) override;
    bool rangeInRange(const TextRange &outer, const TextRange &inner) override;
    bool rangesEqual(const TextRange &a, const TextRange &b) override;
    bool findText(const TextRange &range, const QString &text) override;
    bool selectRange(const TextRange &range) override;
    ReplaceAllResult replaceAll(
        ReplaceScope scope, const QString &find, const QString &replacement) override;
    QPoint scrollPosition() override;
    bool setScrollLeft(int left) override;
    bool setScrollTop(int top) override;
    bool print(QPrinter *printer) override;
    bool printToPdf(const QString &path) override;
    bool setEditable(bool editable) override;
    bool isEditable() override;
    bool setScrollBarsVisible(bool visible) override;
    bool setBaseUrl(const QString &url) override;
    QString baseUrl() const override { return m_baseUrl; }
    bool setDocumentAddress(const QString &url) override;
    bool refresh() override;
    bool useElementFormatting() override;
    bool focusDocument() override;
    bool execCommand(int commandId, int option = OptionDoDefault, const QVariant &argument = {},
        QVariant *result = nullptr) override;
    bool findNext(const QString &text, const SearchOptions &options) override;
    QHash<int, CommandState> queryStatus(
        const QList<int> &commandIds, QHash<int, QVariant> *values = nullptr) override;
    void requestStatus(const QList<int> &commandIds, StatusAnswer done) override;
    std::optional<MenuTarget> menuTarget(const QPoint &position) const override;
    // The calls made into the adapter so far.
    quint64 callsMade() const { return m_callSerial; }

    SpellingText spellingText(quint64 since = 0) override;
    void requestVisibleSpellingText(SpellingTextAnswer done) override;
    bool selectSpellingText(TextPoint start, TextPoint end) override;
    QList<std::pair<int, QString>> replaceSpellingText(const QList<SpellingEdit> &edits) override;
    TextAtPoint spellingTextAt(const QPoint &viewPoint) override;
    bool underlineSpellingText(const QList<std::pair<TextPoint, TextPoint>> &words) override;

    // Display switches of the editing view; what they draw never reaches the markup.
    bool setElementText(const Element &element, const QString &text) override;
    bool displaySwitch(const QString &name) override { return display(name); }
    bool setDisplaySwitch(const QString &name, bool on) override { return setDisplay(name, on); }
    bool showBorders() { return display(QStringLiteral("borders")); }
    bool setShowBorders(bool on) { return setDisplay(QStringLiteral("borders"), on); }
    bool showDetails() { return display(QStringLiteral("details")); }
    bool setShowDetails(bool on) { return setDisplay(QStringLiteral("details"), on); }
    bool snapToGrid() { return display(QStringLiteral("snapToGrid")); }
    bool setSnapToGrid(bool on) { return setDisplay(QStringLiteral("snapToGrid"), on); }

    // Direct access to the adapter for operations without a typed wrapper yet (tests and
    // benchmarks use it to inspect the document).
    ScriptBridge::Result call(const QString &operation, const QVariantList &arguments = {},
        std::chrono::milliseconds timeout = ScriptBridge::defaultTimeout);

    // The world the adapter runs in; the document's own scripts would run in another.
    static quint32 adapterWorld();
    QWebEnginePage *page() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void watchFocusProxy();
    void handleNotification(const QString &kind, const QVariantList &args);
    void deliverNotification(const QString &kind, const QVariantList &args);
    void scheduleDeferredNotifications();
    void flushDeferredNotifications();
    QVariant callValue(const QString &operation, const QVariantList &arguments = {},
        std::chrono::milliseconds timeout = ScriptBridge::defaultTimeout);
    bool callBool(const QString &operation, const QVariantList &arguments = {});
    void post(const QString &operation, const QVariantList &arguments);
    QList<Element> elementList(const QVariant &value) const;
    // A range handle the adapter gave out, leased so that the adapter frees the range once
    // the last copy is gone.
    TextRange adoptRange(const QVariant &value);
    int moveBy(const QString &operation, const TextRange &range, TextUnit unit, int count);
    bool display(const QString &name);
    bool setDisplay(const QString &name, bool on);
    bool keepUntilReady(const QString &name, const QVariant &value);
    // Keeps a report of the followed commands' states that the adapter made after call
    // serial, with input the user input counted when it was asked for.
    void takeReport(const QVariant &report, quint64 serial, quint64 input);
    bool answerFromReport(const QList<int> &commandIds, QHash<int, CommandState> &status,
        QHash<int, QVariant> *values) const;
    void takeMenuRequest(const QPoint &position, quint64 serial, const QVariantMap &context);

    QWebEngineView *m_view = nullptr;
    QWebChannel *m_channel = nullptr;
    SurfaceNotifier *m_notifier = nullptr;
    std::unique_ptr<ScriptBridge> m_bridge;
    bool m_ready = false;
    int m_callDepth = 0;
    QList<std::pair<QString, QVariantList>> m_deferred;
    // Settings of the surface made before the adapter was up; it gets them when it is.
    QVariantMap m_earlySettings;
    QString m_baseUrl;
    // Ids of ranges whose last handle was dropped, freed with the next call.
    std::shared_ptr<QVariantList> m_releasedRanges = std::make_shared<QVariantList>();

    // Every call carries the next serial; the adapter's reports say which call they came
    // after. A report is current while no call and no user input has come since.
    quint64 m_callSerial = 0;
    quint64 m_inputSerial = 0;
    QList<int> m_reportedIds;
    struct Report
    {
        quint64 call = 0;
        quint64 input = 0;
        QHash<int, CommandState> states;
        QHash<int, QVariant> values;
    };
    std::optional<Report> m_report;
    // What the last context menu came with: its target and the text under the pointer.
    struct MenuRequest
    {
        QPoint at;
        quint64 call = 0;
        std::optional<MenuTarget> target;
        std::optional<TextAtPoint> text;
    };
    MenuRequest m_menu;
    // The spelling check took its text from the menu's request: the adapter's next spelling
    // operation is told so.
    bool m_menuTextTaken = false;
};

// Receives the adapter's notifications through the web channel.
//
// While the channel delivers a notification the engine cannot answer a call: the answer
// travels behind the delivery, which has not returned. Whatever runs meanwhile (a directly
// connected slot, anything that pumps events) must not wait for one.
class SurfaceNotifier : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool delivering() const { return m_delivering > 0; }
    // Runs each time the outermost delivery has returned.
    void setDeliveryDone(std::function<void()> done) { m_deliveryDone = std::move(done); }

public Q_SLOTS:
    void notify(const QString &kind, const QVariantList &args);

Q_SIGNALS:
    void notified(const QString &kind, const QVariantList &args);

private:
    int m_delivering = 0;
    std::function<void()> m_deliveryDone;
};

} // namespace Vantry::Platform

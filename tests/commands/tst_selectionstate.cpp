// How the toolbar follows the selection and how the font boxes apply, against a scripted
// status source and a recording command sink: the rules, with no document.

#include "../common/datarows.h"

#include "commands/commandsink.h"
#include "commands/editortoolbar.h"
#include "commands/fontcontrols.h"
#include "commands/selectionstate.h"
#include "commands/toolbarbuilder.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QToolBar>

#include <memory>

using namespace Vantry::Commands;
using namespace Qt::StringLiterals;

namespace {

class ScriptedStatus final : public CommandStatusSource
{
public:
    StatusSnapshot queryStatus(const QList<int> &commandIds) override
    {
        ++calls;
        asked = commandIds;
        StatusSnapshot snapshot;
        snapshot.answered = answered;
        if (!answered)
            return snapshot;
        for (int id : commandIds)
            snapshot.states.insert(id, static_cast<CommandState>(states.value(id, fallback)));
        snapshot.fontName = fontName;
        snapshot.fontSize = fontSize;
        return snapshot;
    }

    // Held until answerLater() when deferring, as an engine that answers later would.
    void requestStatus(
        const QList<int> &commandIds, std::function<void(const StatusSnapshot &)> done) override
    {
        if (!deferring) {
            done(queryStatus(commandIds));
            return;
        }
        held.append([this, commandIds, done] { done(queryStatus(commandIds)); });
    }

    void answerLater(qsizetype index) { held.at(index)(); }

    bool deferring = false;
    QList<std::function<void()>> held;
    bool answered = true;
    int fallback = Enabled;
    QHash<int, int> states;
    QString fontName;
    int fontSize = 0;
    int calls = 0;
    QList<int> asked;
};

class RecordingSink final : public CommandSink
{
public:
    bool execute(int commandId, const QVariant &argument) override
    {
        runs.append({commandId, argument});
        return true;
    }

    QList<QPair<int, QVariant>> runs;
};

using Run = QPair<int, QVariant>;

} // namespace

class tst_SelectionState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_host = std::make_unique<QWidget>();
        std::array<QToolBar *, 3> rows{};
        for (QToolBar *&row : rows)
            row = new QToolBar(m_host.get());
        m_ready = true;
        m_design = true;
        m_status = ScriptedStatus();
        m_sink.runs.clear();
        m_toolbar = std::make_unique<EditorToolbar>(rows, m_host.get(),
            EditorToolbar::Hooks{[this] { return m_ready; }, [this] { return m_design; }, {}});
        m_toolbar->setStatusSource(&m_status);
        m_toolbar->setCommandSink(&m_sink);
    }

    void cleanup()
    {
        m_toolbar.reset();
        m_host.reset();
    }

    void statusDrivesTheButton_data()
    {
        columns<int, bool, bool>("state", "enabled", "pressed");
        row("not supported", int(NotSupported), false, false);
        row("disabled", int(Disabled), false, false);
        row("enabled", int(Enabled), true, false);
        row("latched", int(Latched), true, true);
        row("ninched", int(Ninched), true, false);
    }

    void statusDrivesTheButton()
    {
        auto [state, enabled, pressed] = fetch<int, bool, bool>("state", "enabled", "pressed");

        QSignalSpy events(m_toolbar.get(), &EditorToolbar::selectionStateChanged);
        m_status.states.insert(DesignCommand::Bold, state);
        m_toolbar->refresh();

        QCOMPARE(button(u"Bold"_s)->isEnabled(), enabled);
        QCOMPARE(button(u"Bold"_s)->isChecked(), pressed);
        QCOMPARE(m_toolbar->buttonLatchedState(u"bold"_s), QVariant(pressed));
        QCOMPARE(
            eventsFor(events, u"Bold"_s), (QList<QVariantList>{{u"Bold"_s, enabled, pressed}}));
    }

    void oneQueryReportsEveryButtonInOrder()
    {
        QSignalSpy events(m_toolbar.get(), &EditorToolbar::selectionStateChanged);
        QSignalSpy texts(m_toolbar.get(), &EditorToolbar::selectionTextChanged);
        m_toolbar->refresh();

        QCOMPARE(m_status.calls, 1);
        QVERIFY(m_status.asked.contains(DesignCommand::GetFontName));
        QVERIFY(m_status.asked.contains(DesignCommand::GetFontSize));
        for (int id : ToolbarModel::statusCommands())
            QVERIFY(m_status.asked.contains(id));

        QStringList expected;
        for (const auto &entry : ToolbarModel::stateEntries())
            expected.append(QString(entry.key));
        expected << u"FontName"_s << u"FontSize"_s;
        QStringList reported;
        for (const QVariantList &event : events)
            reported.append(event.at(0).toString());
        QCOMPARE(reported, expected);
        QCOMPARE(texts.size(), 2);
    }

    void refreshWithoutAnAnswerKeepsTheButtons_data()
    {
        // Source view: nothing is asked or raised; an unanswered query raises only the buttons
        // that need no answer.
        columns<bool, int, int>("design", "queries", "events");
        row("source view", false, 1, 0);
        row("unanswered query", true, 2, 8);
    }

    void refreshWithoutAnAnswerKeepsTheButtons()
    {
        auto [design, queries, events] = fetch<bool, int, int>("design", "queries", "events");
        m_status.states.insert(DesignCommand::Bold, Latched);
        m_toolbar->refresh();
        QSignalSpy raised(m_toolbar.get(), &EditorToolbar::selectionStateChanged);
        QSignalSpy texts(m_toolbar.get(), &EditorToolbar::selectionTextChanged);
        m_design = design;
        m_status.answered = false;
        m_status.fallback = NotSupported;
        m_toolbar->refresh();

        QCOMPARE(m_status.calls, queries);
        QCOMPARE(raised.size(), events);
        QCOMPARE(texts.size(), 0);
        QVERIFY(button(u"Bold"_s)->isEnabled());
        QVERIFY(button(u"Bold"_s)->isChecked());
    }

    void hostSwitchedOffButtonStaysOff()
    {
        QSignalSpy events(m_toolbar.get(), &EditorToolbar::selectionStateChanged);
        m_toolbar->setButtonState(u"bold"_s, false);
        QVERIFY(!button(u"Bold"_s)->isEnabled());

        m_status.states.insert(DesignCommand::Bold, Latched);
        m_toolbar->refresh();
        QVERIFY(!button(u"Bold"_s)->isEnabled());
        QCOMPARE(eventsFor(events, u"Bold"_s).value(0).value(1), QVariant(false));

        // Allowed again through the toolbar object: back at the next refresh, not before.
        m_toolbar->setButtonEnabledState(3, true);
        QVERIFY(!button(u"Bold"_s)->isEnabled());
        m_toolbar->refresh();
        QVERIFY(button(u"Bold"_s)->isEnabled());
        QVERIFY(button(u"Bold"_s)->isChecked());
    }

    void buttonsWithoutCommandFollowThePermission_data()
    {
        // ZOrder keeps whatever state it has; the others follow the host's permission.
        columns<QString, bool, bool>("key", "allowed", "enabled");
        for (const char *key : {"Border", "uploadimage", "PageProperties", "InsertFlash"}) {
            QTest::addRow("%s allowed", key) << QString::fromLatin1(key) << true << true;
            QTest::addRow("%s forbidden", key) << QString::fromLatin1(key) << false << false;
        }
        row("ZOrder kept off", "ZOrder", true, false);
    }

    void buttonsWithoutCommandFollowThePermission()
    {
        auto [key, allowed, enabled] = fetch<QString, bool, bool>("key", "allowed", "enabled");

        QSignalSpy events(m_toolbar.get(), &EditorToolbar::selectionStateChanged);
        m_status.fallback = NotSupported;
        button(key)->setChecked(true);
        m_toolbar->setButtonState(key.toUpper(), allowed);
        button(key)->setEnabled(!allowed);
        m_toolbar->refresh();

        QCOMPARE(button(key)->isEnabled(), enabled);
        const bool pressed = button(key)->isCheckable();
        QCOMPARE(eventsFor(events, key), (QList<QVariantList>{{key, enabled, pressed}}));
    }

    // A refresh that follows the document's notifications does not wait: its answer comes later
    // and applies only while it is the latest and the design view still shows.
    void onlyTheLatestRefreshIsApplied()
    {
        m_status.deferring = true;
        QAction *bold = button(u"Bold"_s);
        m_status.states.insert(DesignCommand::Bold, Latched);
        m_toolbar->requestRefresh();
        m_status.states.insert(DesignCommand::Bold, Disabled);
        m_toolbar->requestRefresh();
        QCOMPARE(m_status.held.size(), 2);
        QVERIFY(!bold->isChecked());

        m_status.states.insert(DesignCommand::Bold, Latched);
        m_status.answerLater(0);
        QVERIFY(!bold->isChecked());
        m_status.answerLater(1);
        QVERIFY(bold->isChecked());

        // A refresh made now supersedes one still on its way.
        m_toolbar->requestRefresh();
        m_status.states.insert(DesignCommand::Bold, Enabled);
        m_toolbar->refresh();
        QVERIFY(!bold->isChecked());
        m_status.states.insert(DesignCommand::Bold, Latched);
        m_status.answerLater(2);
        QVERIFY(!bold->isChecked());

        m_toolbar->requestRefresh();
        m_design = false;
        m_status.answerLater(3);
        QVERIFY(!bold->isChecked());
    }

    void fontState_data()
    {
        columns<int, QString, int, int, QString, QString>(
            "nameState", "name", "sizeState", "size", "nameShown", "sizeShown");
        row("listed face", int(Enabled), u"Arial"_s, int(Enabled), 4, u"Arial"_s, u"4"_s);
        row("unlisted face", int(Latched), u"Georgia"_s, int(Enabled), 7, u"Georgia"_s, u"7"_s);
        row("two faces", int(Ninched), QString(), int(Ninched), 0, QString(), QString());
        row("no size", int(Enabled), u"Tahoma"_s, int(Enabled), 0, u"Tahoma"_s, QString());
    }

    void fontState()
    {
        auto [nameState, name, sizeState, size, nameShown, sizeShown]
            = fetch<int, QString, int, int, QString, QString>(
                "nameState", "name", "sizeState", "size", "nameShown", "sizeShown");

        // Something shown before, so that clearing shows.
        m_toolbar->fonts().showFontName(u"Verdana"_s);
        m_toolbar->fonts().showFontSize(u"2"_s);

        QSignalSpy events(m_toolbar.get(), &EditorToolbar::selectionStateChanged);
        QSignalSpy texts(m_toolbar.get(), &EditorToolbar::selectionTextChanged);
        m_status.states.insert(DesignCommand::GetFontName, nameState);
        m_status.states.insert(DesignCommand::GetFontSize, sizeState);
        m_status.fontName = name;
        m_status.fontSize = size;
        m_toolbar->refresh();

        QCOMPARE(m_toolbar->fonts().fontCombo()->currentText(), nameShown);
        QCOMPARE(m_toolbar->fonts().fontSizeCombo()->currentText(), sizeShown);
        QCOMPARE(texts.size(), 2);
        QCOMPARE(texts[0], (QVariantList{u"FontName"_s, nameShown}));
        QCOMPARE(texts[1], (QVariantList{u"FontSize"_s, sizeShown}));
        QCOMPARE(eventsFor(events, u"FontName"_s),
            (QList<QVariantList>{{u"FontName"_s, true, nameState == Latched}}));
        // A displayed face selects its list entry, so the list opens on it.
        QCOMPARE(m_toolbar->fonts().fontCombo()->currentIndex(),
            FontControls::faceNames().indexOf(nameShown));
        // Showing the selection's font applies nothing.
        QVERIFY(m_sink.runs.isEmpty());
    }

    void applyGuards_data()
    {
        columns<bool, bool, int, bool>("ready", "design", "state", "runs");
        row("available", true, true, int(Enabled), true);
        row("latched", true, true, int(Latched), true);
        row("mixed selection", true, true, int(Ninched), true);
        row("no document yet", false, true, int(Enabled), false);
        row("source view", true, false, int(Enabled), false);
        row("nothing selectable", true, true, int(Disabled), false);
        row("not supported", true, true, int(NotSupported), false);
    }

    void applyGuards()
    {
        auto [ready, design, state, runs]
            = fetch<bool, bool, int, bool>("ready", "design", "state", "runs");

        m_ready = ready;
        m_design = design;
        m_status.fallback = state;
        FontControls &fonts = m_toolbar->fonts();

        QCOMPARE(fonts.applyFontName(u"Arial"_s), runs);
        QCOMPARE(fonts.applyFontSize(3), runs);
        QCOMPARE(fonts.applyFontColor(u"#FF0000"_s), runs);
        const QList<Run> expected = runs
            ? QList<Run>{{DesignCommand::SetFontName, u"Arial"_s}, {DesignCommand::SetFontSize, 3},
                {DesignCommand::SetForeColor, u"#FF0000"_s}}
            : QList<Run>{};
        QCOMPARE(m_sink.runs, expected);
    }

    void chosenEntriesComeFromTheFixedLists_data()
    {
        QTest::addColumn<bool>("sizeBox");
        QTest::addColumn<int>("index");
        QTest::addColumn<QVariant>("applied"); // invalid: nothing applied

        row("fourth face", false, 3, QVariant(u"Courier"_s));
        row("last face", false, 5, QVariant(u"Wingdings"_s));
        row("face past the list", false, 6, QVariant());
        row("last size", true, 6, QVariant(u"7"_s));
        row("size past the list", true, 7, QVariant());
        row("no entry", true, -1, QVariant());
    }

    void chosenEntriesComeFromTheFixedLists()
    {
        auto [sizeBox, index, applied] = fetch<bool, int, QVariant>("sizeBox", "index", "applied");

        FontControls &fonts = m_toolbar->fonts();
        QComboBox *combo = sizeBox ? fonts.fontSizeCombo() : fonts.fontCombo();
        // The display may differ from the list (typed text); the list decides.
        combo->setEditText(u"something typed"_s);
        Q_EMIT combo->activated(index);

        const int command = sizeBox ? DesignCommand::SetFontSize : DesignCommand::SetFontName;
        const QList<Run> expected
            = applied.isValid() ? QList<Run>{{command, applied}} : QList<Run>{};
        QCOMPARE(m_sink.runs, expected);
    }

    void enterAppliesTheTypedText_data()
    {
        columns<bool, QString, Qt::Key>("sizeBox", "typed", "key");
        row("unlisted face", false, u"Georgia"_s, Qt::Key_Return);
        row("keypad enter", false, u"Georgia"_s, Qt::Key_Enter);
        row("listed face", false, u"Arial"_s, Qt::Key_Return);
        row("size", true, u"5"_s, Qt::Key_Return);
    }

    void enterAppliesTheTypedText()
    {
        auto [sizeBox, typed, key] = fetch<bool, QString, Qt::Key>("sizeBox", "typed", "key");

        QComboBox *combo
            = sizeBox ? m_toolbar->fonts().fontSizeCombo() : m_toolbar->fonts().fontCombo();
        combo->setCompleter(nullptr);
        QTest::keyClicks(combo->lineEdit(), typed);
        QVERIFY(m_sink.runs.isEmpty());
        QTest::keyClick(combo->lineEdit(), key);

        const int command = sizeBox ? DesignCommand::SetFontSize : DesignCommand::SetFontName;
        QCOMPARE(m_sink.runs, (QList<Run>{{command, typed}}));
        // Typed text never joins the fixed list.
        QCOMPARE(combo->count(), sizeBox ? 7 : 6);
    }

private:
    QAction *button(const QString &key) const { return m_toolbar->buttons().button(key); }
    QList<QVariantList> eventsFor(const QSignalSpy &spy, const QString &key) const
    {
        QList<QVariantList> events;
        for (const QVariantList &event : spy) {
            if (event.at(0).toString() == key)
                events.append(event);
        }
        return events;
    }

    std::unique_ptr<QWidget> m_host;
    std::unique_ptr<EditorToolbar> m_toolbar;
    ScriptedStatus m_status;
    RecordingSink m_sink;
    bool m_ready = true;
    bool m_design = true;
};

QTEST_MAIN(tst_SelectionState)
#include "tst_selectionstate.moc"

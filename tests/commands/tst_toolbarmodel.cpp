// The toolbar's rules (button keys, rows, the permission and latched dictionaries) and the
// configuration a host does through clsToolbar, on real toolbar rows without a document.

#include "commands/editortoolbar.h"
#include "commands/fontcontrols.h"
#include "commands/toolbarbuilder.h"
#include "commands/toolbarmodel.h"

#include <VantryHTMLEditor/CompanionObjects.h>

#include <QAction>
#include <QComboBox>
#include <QLayout>
#include <QSignalSpy>
#include <QTest>
#include <QToolBar>
#include <QVBoxLayout>

#include <memory>

using namespace Vantry;
using namespace Vantry::Commands;

class tst_ToolbarModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void buttonKeys_data();
    void buttonKeys();
    void stateEntries_data();
    void stateEntries();
    void dictionariesStartAllowedAndIgnoreCase();
    void displayOrder_data();
    void displayOrder();

    void everyKeyHasAButtonWithIconAndToolTip();
    void shortcuts_data();
    void shortcuts();
    void clickingAToggleReportsTheKeyWithoutFlippingIt();
    void movingOrHidingARowAsksForLayout();
    void forbiddingDisablesAtOnceAllowingWaits();
    void hidingTheFontBoxMovesTheSizeBoxLeft();
    void visibleStateReachesDifferentlySpelledKeys_data();
    void visibleStateReachesDifferentlySpelledKeys();
    void outOfRangeValuesAreRefused();
    void unattachedToolbarConfiguresNothing();
    void toolbarEnablingCoversFontBoxes();

private:
    QAction *button(const QString &key) const { return m_toolbar->buttons().button(key); }

    std::unique_ptr<QWidget> m_host;
    std::array<QToolBar *, 3> m_rows{};
    std::unique_ptr<EditorToolbar> m_toolbar;
    std::unique_ptr<clsToolbar> m_object;
};

void tst_ToolbarModel::init()
{
    m_host = std::make_unique<QWidget>();
    auto *layout = new QVBoxLayout(m_host.get());
    for (QToolBar *&row : m_rows) {
        row = new QToolBar(m_host.get());
        layout->addWidget(row);
    }
    m_toolbar = std::make_unique<EditorToolbar>(m_rows, m_host.get(), EditorToolbar::Hooks{});
    m_object = std::make_unique<clsToolbar>();
    m_toolbar->attach(m_object.get());
}

void tst_ToolbarModel::cleanup()
{
    m_object.reset();
    m_toolbar.reset();
    m_host.reset();
}

void tst_ToolbarModel::buttonKeys_data()
{
    QTest::addColumn<int>("member");
    QTest::addColumn<QString>("key");

    QTest::newRow("first") << int(clsToolbar::tbb_Font) << QStringLiteral("Font");
    QTest::newRow("lower-case member") << int(clsToolbar::tbb_bold) << QStringLiteral("Bold");
    QTest::newRow("upload") << int(clsToolbar::tbb_UploadImage) << QStringLiteral("UploadImage");
    QTest::newRow("table") << int(clsToolbar::tbb_InsertTABLE) << QStringLiteral("InsertTABLE");
    QTest::newRow("page") << int(clsToolbar::tbb_PageProperties)
                          << QStringLiteral("PageProperties");
    QTest::newRow("last") << int(clsToolbar::tbb_SplitCells) << QStringLiteral("SplitCells");
    QTest::newRow("zero") << 0 << QString();
    QTest::newRow("past the end") << 40 << QString();
    QTest::newRow("negative") << -1 << QString();
}

void tst_ToolbarModel::buttonKeys()
{
    QFETCH(int, member);
    QFETCH(QString, key);
    QCOMPARE(ToolbarModel::buttonKey(member), key);
}

void tst_ToolbarModel::stateEntries_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("statusCommand");

    QTest::newRow("first") << 0 << QStringLiteral("Bold") << 5000;
    QTest::newRow("border") << 19 << QStringLiteral("Border") << 0;
    QTest::newRow("absolute") << 21 << QStringLiteral("Absolute") << 5028;
    QTest::newRow("table") << 25 << QStringLiteral("InsertTable") << 5022;
    QTest::newRow("upload") << 34 << QStringLiteral("uploadimage") << 0;
    QTest::newRow("last") << 37 << QStringLiteral("InsertFlash") << 0;
}

void tst_ToolbarModel::stateEntries()
{
    QFETCH(int, index);
    QFETCH(QString, key);
    QFETCH(int, statusCommand);

    const auto &entries = ToolbarModel::stateEntries();
    QCOMPARE(int(entries.size()), 38);
    QCOMPARE(QString(entries[std::size_t(index)].key), key);
    QCOMPARE(entries[std::size_t(index)].statusCommand, statusCommand);
    QCOMPARE(ToolbarModel::statusCommands().size(), 30);
}

void tst_ToolbarModel::dictionariesStartAllowedAndIgnoreCase()
{
    ToolbarModel model;
    for (const auto &entry : ToolbarModel::stateEntries()) {
        QCOMPARE(model.permission(QString(entry.key).toUpper()), std::optional<bool>(true));
        QCOMPARE(model.latched(QString(entry.key)), std::optional<bool>(true));
    }
    QVERIFY(!model.permission(QStringLiteral("Font")).has_value());

    // The host's table spells the key differently from the toolbar.
    model.setPermission(ToolbarModel::buttonKey(clsToolbar::tbb_UploadImage), false);
    QVERIFY(!model.isAllowed(QStringLiteral("uploadimage")));
    model.setLatched(QStringLiteral("INSERTTABLE"), false);
    QCOMPARE(model.latched(QStringLiteral("InsertTable")), std::optional<bool>(false));
}

void tst_ToolbarModel::displayOrder_data()
{
    QTest::addColumn<QList<int>>("moves"); // pairs of toolbar, row
    QTest::addColumn<QList<int>>("topToBottom");
    QTest::addColumn<bool>("accepted");

    QTest::newRow("as built") << QList<int>{} << QList<int>{0, 1, 2} << true;
    QTest::newRow("first to third") << QList<int>{0, 2} << QList<int>{2, 1, 0} << true;
    QTest::newRow("third to first") << QList<int>{2, 0} << QList<int>{2, 1, 0} << true;
    QTest::newRow("own row") << QList<int>{1, 1} << QList<int>{0, 1, 2} << true;
    QTest::newRow("two moves") << QList<int>{0, 2, 0, 1} << QList<int>{2, 0, 1} << true;
    QTest::newRow("row out of range") << QList<int>{0, 3} << QList<int>{0, 1, 2} << false;
    QTest::newRow("negative row") << QList<int>{0, -1} << QList<int>{0, 1, 2} << false;
    QTest::newRow("toolbar out of range") << QList<int>{3, 0} << QList<int>{0, 1, 2} << false;
}

void tst_ToolbarModel::displayOrder()
{
    QFETCH(QList<int>, moves);
    QFETCH(QList<int>, topToBottom);
    QFETCH(bool, accepted);

    ToolbarModel model;
    bool allAccepted = true;
    for (qsizetype i = 0; i + 1 < moves.size(); i += 2)
        allAccepted = model.setDisplayOrder(moves[i], moves[i + 1]) && allAccepted;
    QCOMPARE(allAccepted, accepted);

    const auto order = model.toolbarsTopToBottom();
    QCOMPARE((QList<int>{order.begin(), order.end()}), topToBottom);
    for (int row = 0; row < 3; ++row) {
        QCOMPARE(model.displayOrder(topToBottom[row]), row);
        QCOMPARE(model.toolbarTop(topToBottom[row]), ToolbarModel::rowTops[std::size_t(row)]);
    }
}

void tst_ToolbarModel::everyKeyHasAButtonWithIconAndToolTip()
{
    for (const auto &entry : ToolbarModel::stateEntries()) {
        QAction *action = button(QString(entry.key));
        QVERIFY2(action, entry.key.data());
        QCOMPARE(action->objectName(), QString(entry.key));
        QVERIFY2(!action->icon().pixmap(16, 16).isNull(), entry.key.data());
        QVERIFY2(!action->toolTip().isEmpty(), entry.key.data());
    }
    for (int member = ToolbarModel::firstButton; member <= ToolbarModel::lastButton; ++member)
        QVERIFY2(
            button(ToolbarModel::buttonKey(member)), qPrintable(ToolbarModel::buttonKey(member)));

    QCOMPARE(button(QStringLiteral("Font"))->parent(),
        static_cast<QObject *>(m_rows[ToolbarButtons::Formatting]));
    QCOMPARE(button(QStringLiteral("Absolute"))->toolTip(),
        QStringLiteral("Set Position Attribute To Absolute"));
}

void tst_ToolbarModel::shortcuts_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QKeySequence>("shortcut");

    QTest::newRow("bold") << QStringLiteral("Bold") << QKeySequence(Qt::CTRL | Qt::Key_B);
    QTest::newRow("italic") << QStringLiteral("Italic") << QKeySequence(Qt::CTRL | Qt::Key_I);
    QTest::newRow("underline") << QStringLiteral("Underline") << QKeySequence(Qt::CTRL | Qt::Key_U);
    QTest::newRow("undo") << QStringLiteral("UnDo") << QKeySequence(Qt::CTRL | Qt::Key_Z);
    QTest::newRow("redo") << QStringLiteral("ReDo") << QKeySequence(Qt::CTRL | Qt::Key_Y);
    QTest::newRow("cut") << QStringLiteral("Cut") << QKeySequence(Qt::CTRL | Qt::Key_X);
    QTest::newRow("copy") << QStringLiteral("Copy") << QKeySequence(Qt::CTRL | Qt::Key_C);
    QTest::newRow("paste") << QStringLiteral("Paste") << QKeySequence(Qt::CTRL | Qt::Key_V);
}

void tst_ToolbarModel::shortcuts()
{
    QFETCH(QString, key);
    QFETCH(QKeySequence, shortcut);

    QAction *action = button(key);
    QCOMPARE(action->shortcut(), shortcut);
    QCOMPARE(action->shortcutContext(), Qt::WidgetWithChildrenShortcut);
    // Only the editor is an ancestor of the document that has the focus.
    QVERIFY(m_host->actions().contains(action));
    QVERIFY(action->toolTip().contains(shortcut.toString(QKeySequence::NativeText)));
}

void tst_ToolbarModel::clickingAToggleReportsTheKeyWithoutFlippingIt()
{
    QSignalSpy clicked(m_toolbar.get(), &EditorToolbar::buttonClicked);
    QAction *bold = button(QStringLiteral("bold"));
    QVERIFY(bold->isCheckable());

    bold->trigger();
    QVERIFY(!bold->isChecked());
    button(QStringLiteral("uploadimage"))->trigger();

    QCOMPARE(clicked.size(), 2);
    QCOMPARE(clicked[0][0].toString(), QStringLiteral("Bold"));
    QCOMPARE(clicked[1][0].toString(), QStringLiteral("uploadimage"));
}

void tst_ToolbarModel::movingOrHidingARowAsksForLayout()
{
    QSignalSpy changed(m_toolbar.get(), &EditorToolbar::rowsChanged);

    QVERIFY(m_object->setToolbarDisplayOrder(clsToolbar::tb_TableEditing, clsToolbar::tbo_first));
    QCOMPARE(m_object->ToolbarDisplayOrder(clsToolbar::tb_TableEditing), clsToolbar::tbo_first);
    QCOMPARE(m_object->ToolbarDisplayOrder(clsToolbar::tb_Standard), clsToolbar::tbo_third);
    QCOMPARE(m_object->ToolbarDisplayOrder(clsToolbar::tb_Formatting), clsToolbar::tbo_second);
    const std::array<QToolBar *, 3> expected{m_rows[2], m_rows[1], m_rows[0]};
    QCOMPARE(m_toolbar->rowsTopToBottom(), expected);
    QCOMPARE(changed.size(), 1);

    // A toolbar moved to its own row stays, and nothing needs laying out.
    QVERIFY(m_object->setToolbarDisplayOrder(clsToolbar::tb_Formatting, clsToolbar::tbo_second));
    QCOMPARE(changed.size(), 1);

    QVERIFY(m_object->ToolbarVisibleState(clsToolbar::tb_Formatting));
    QVERIFY(m_object->setToolbarVisibleState(clsToolbar::tb_Formatting, false));
    QVERIFY(!m_object->ToolbarVisibleState(clsToolbar::tb_Formatting));
    QVERIFY(m_rows[1]->isHidden());
    QCOMPARE(changed.size(), 2);
}

void tst_ToolbarModel::forbiddingDisablesAtOnceAllowingWaits()
{
    QAction *bold = button(QStringLiteral("Bold"));
    QVERIFY(m_object->setButtonEnabledState(clsToolbar::tbb_bold, false));
    QVERIFY(!bold->isEnabled());
    QVERIFY(!m_object->ButtonEnabledState(clsToolbar::tbb_bold));
    QCOMPARE(m_toolbar->buttonEnabledState(QStringLiteral("BOLD")), QVariant(false));

    QVERIFY(m_object->setButtonEnabledState(clsToolbar::tbb_bold, true));
    QVERIFY(m_object->ButtonEnabledState(clsToolbar::tbb_bold));
    QVERIFY(!bold->isEnabled());
}

void tst_ToolbarModel::hidingTheFontBoxMovesTheSizeBoxLeft()
{
    m_host->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_host.get()));
    QComboBox *face = m_toolbar->fonts().fontCombo();
    QComboBox *size = m_toolbar->fonts().fontSizeCombo();
    QVERIFY(face->isVisible());
    const int shownLeft = size->x();
    QVERIFY(shownLeft >= face->x() + face->width());

    QVERIFY(m_object->setButtonVisibleState(clsToolbar::tbb_Font, false));
    m_rows[ToolbarButtons::Formatting]->layout()->activate();
    QVERIFY(!face->isVisible());
    QVERIFY(size->x() < shownLeft);
    QVERIFY(size->x() <= face->width() / 4);
    QVERIFY(!m_object->ButtonVisibleState(clsToolbar::tbb_Font));

    QVERIFY(m_object->setButtonVisibleState(clsToolbar::tbb_Font, true));
    m_rows[ToolbarButtons::Formatting]->layout()->activate();
    QVERIFY(face->isVisible());
    QCOMPARE(size->x(), shownLeft);
}

void tst_ToolbarModel::visibleStateReachesDifferentlySpelledKeys_data()
{
    QTest::addColumn<int>("member");
    QTest::addColumn<QString>("toolbarKey");

    QTest::newRow("upload") << int(clsToolbar::tbb_UploadImage) << QStringLiteral("uploadimage");
    QTest::newRow("table") << int(clsToolbar::tbb_InsertTABLE) << QStringLiteral("InsertTable");
    QTest::newRow("font size") << int(clsToolbar::tbb_FontSize) << QStringLiteral("FontSize");
}

void tst_ToolbarModel::visibleStateReachesDifferentlySpelledKeys()
{
    QFETCH(int, member);
    QFETCH(QString, toolbarKey);

    const auto buttonMember = static_cast<clsToolbar::em_ToolbarButtons>(member);
    QVERIFY(m_object->setButtonVisibleState(buttonMember, false));
    QVERIFY(!button(toolbarKey)->isVisible());
    // The store is shared with the latched state, under the toolbar's key too.
    QCOMPARE(m_toolbar->buttonLatchedState(toolbarKey), QVariant(false));
    QVERIFY(m_object->setButtonEnabledState(buttonMember, false));
    QVERIFY(!button(toolbarKey)->isEnabled());
    QCOMPARE(m_toolbar->buttonEnabledState(toolbarKey), QVariant(false));
}

void tst_ToolbarModel::outOfRangeValuesAreRefused()
{
    const auto past = static_cast<clsToolbar::em_ToolbarButtons>(40);
    QVERIFY(!m_object->setButtonEnabledState(past, false));
    QVERIFY(!m_object->setButtonVisibleState(past, false));
    QVERIFY(!m_object->ButtonEnabledState(past));
    QVERIFY(!m_object->setToolbarDisplayOrder(
        clsToolbar::tb_Standard, static_cast<clsToolbar::em_ToolbarOrder>(3)));
    QVERIFY(!m_object->setToolbarVisibleState(static_cast<clsToolbar::em_Toolbars>(3), false));
    QCOMPARE(m_object->ToolbarDisplayOrder(clsToolbar::tb_Standard), clsToolbar::tbo_first);
}

void tst_ToolbarModel::unattachedToolbarConfiguresNothing()
{
    clsToolbar loose;
    QVERIFY(!loose.setButtonEnabledState(clsToolbar::tbb_bold, false));
    QVERIFY(!loose.ButtonEnabledState(clsToolbar::tbb_bold));
    QCOMPARE(loose.ToolbarDisplayOrder(clsToolbar::tb_TableEditing), clsToolbar::tbo_first);

    // An object that outlives its editor goes quiet as well.
    m_toolbar.reset();
    QVERIFY(!m_object->setButtonEnabledState(clsToolbar::tbb_bold, false));
}

void tst_ToolbarModel::toolbarEnablingCoversFontBoxes()
{
    m_toolbar->setToolbarEnabled(false);
    for (QAction *action : m_toolbar->buttons().buttons())
        QVERIFY2(!action->isEnabled(), qPrintable(action->objectName()));
    QVERIFY(!m_toolbar->fonts().fontCombo()->isEnabled());
    QVERIFY(!m_toolbar->fonts().fontSizeCombo()->isEnabled());

    m_toolbar->setToolbarEnabled(true);
    QVERIFY(m_toolbar->fonts().fontSizeCombo()->isEnabled());
}

QTEST_MAIN(tst_ToolbarModel)
#include "tst_toolbarmodel.moc"

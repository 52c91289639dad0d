#pragma once

namespace Vantry::Control {

// Turns the focus notifications of the editor's children into one entry and one exit per
// transition, however many notifications arrive.
class FocusTracker
{
public:
    // Returns true when this is an entry (the editor did not have the focus).
    bool enter();
    // Returns true when this is an exit (the editor had the focus).
    bool leave();

    bool hasFocus() const { return m_hasFocus; }
    // Cleared on exit; the selection tracking reads it to know the user came back.
    bool focusSeen() const { return m_focusSeen; }
    void clearFocusSeen() { m_focusSeen = false; }
    int entryCount() const { return m_entries; }

private:
    bool m_hasFocus = false;
    bool m_focusSeen = false;
    int m_entries = 0;
};

} // namespace Vantry::Control

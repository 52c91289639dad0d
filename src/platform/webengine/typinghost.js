// Typing in a long document. With the whole document in design mode, what the engine does
// for every key grows with the page: it hands the whole editable text to input methods,
// among others. While the user types plain text into one top-level block, that block alone
// is editable: design mode goes off and a rule of this file's own sheet makes the block an
// editing host of its own, caret kept. Any other key, a pointer press, an operation that
// may edit or move the selection, a new document or a display switch puts the document
// back in design mode before anything else sees the event. Nothing of it reaches the
// markup, and the undo history is the engine's and the adapter's as before.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.typingHost)
        return;

    // Below this much markup the engine's per-key work stays well within a frame, while
    // moving the editing host restyles the whole page on the first key.
    const limits = { from: 2000000 };
    const sheet = new CSSStyleSheet();
    let host = null;
    let place = 0;   // the host's place among its parent's element children, from 1

    const { blockParent, topBlock, childPlace } = V.topBlocks;

    // A key that inserts its character, or deletes one inside the host, keeps it.
    function keeps(e) {
        if (e.ctrlKey || e.metaKey || e.altKey || e.isComposing)
            return false;
        if (e.key.length === 1)
            return true;
        const s = document.getSelection();
        if (!s || !s.isCollapsed || !s.focusNode || s.focusNode.nodeType !== Node.TEXT_NODE)
            return false;
        if (e.key === 'Backspace')
            return s.focusOffset > 0;
        if (e.key === 'Delete')
            return s.focusOffset < s.focusNode.length;
        return false;
    }

    function restore(s, node, offset) {
        if (node && node.isConnected)
            s.setBaseAndExtent(node, offset, node, offset);
    }

    function engage(el, s) {
        const node = s.focusNode, offset = s.focusOffset;
        const path = el.parentElement === document.body ? 'body > ' : 'body > :only-child > ';
        if (!document.adoptedStyleSheets.includes(sheet))
            document.adoptedStyleSheets = [...document.adoptedStyleSheets, sheet];
        place = childPlace(el);
        // A focused editing host would get the engine's focus ring.
        const rule = path + ':nth-child(' + place + ')';
        sheet.replaceSync(rule + ' { -webkit-user-modify: read-write !important; } ' + rule
                          + ':focus { outline: none !important; }');
        document.designMode = 'off';
        host = el;
        el.focus({ preventScroll: true });
        restore(s, node, offset);
    }

    function release() {
        if (!host)
            return;
        host = null;
        const s = document.getSelection();
        const node = s && s.focusNode, offset = s ? s.focusOffset : 0;
        sheet.replaceSync('');
        document.designMode = 'on';
        if (s)
            restore(s, node, offset);
    }

    function keydown(e) {
        const s = document.getSelection();
        const caret = s && s.rangeCount && s.isCollapsed ? s.focusNode : null;
        if (host) {
            // The rule finds the block by its place, which an insertion before it moves.
            if (keeps(e) && caret && host.contains(caret)
                && host.parentElement.children[place - 1] === host)
                return;
            release();
        }
        if (e.key.length !== 1 || !keeps(e) || !caret || document.designMode !== 'on'
            || !V.longDocument() || V.documentSize() < limits.from)
            return;
        const el = topBlock(caret, blockParent());
        if (el && el.isContentEditable && !el.querySelector('[contenteditable]'))
            engage(el, s);
    }

    function listen() {
        window.addEventListener('keydown', keydown, true);
        for (const type of ['mousedown', 'compositionstart', 'dragstart', 'drop'])
            window.addEventListener(type, release, true);
    }

    // A document written anew has lost its listeners.
    V.onNewDocument(() => {
        release();
        listen();
    });
    V.onDisplaySet(release);
    // Every operation but those that only read may edit or move the selection, and finds
    // design mode back on.
    V.beforeOperations(name => {
        if (!V.onlyReads(name))
            release();
    });
    listen();

    V.typingHost = { block: () => host, limits };
})();

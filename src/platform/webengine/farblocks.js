// Far blocks in a long document. The editor's sheet lets the engine skip the rendering of
// blocks far from view, but the engine then decides on every frame, for each of those
// blocks, whether it has come near the view: with tens of thousands of blocks that alone
// costs more than a frame, on every key press. So only the blocks within reach of the view
// and of the selection are left to that judgement; the others skip their rendering
// outright, through a rule of this file's own sheet, and cost nothing per frame. They look
// the same: a skipped block keeps the size it was last rendered with either way. The
// engine neither edits, copies nor finds in blocks skipped outright: the ranges follow the
// selection before every insertion and operation, and a search or a selection that starts
// outside the blocks gets them all back.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.farBlocks)
        return;

    // Blocks left to the engine on either side of the one in the middle of the view and of
    // the selection's; a range moves once the view or the selection comes within half of it
    // of an end.
    const REACH = 300;
    const sheet = new CSSStyleSheet();
    let rules = '';       // what the sheet holds
    let view = null;     // [first, last] around the view, counted from 1
    let caret = null;    // the same around the selection
    let lastEnds = [null, null];
    let lastViewBlock = null;

    const { blockParent, topBlock, childPlace: indexOf } = V.topBlocks;

    // Every block back to the engine's judgement.
    function showAll() {
        view = null;
        caret = null;
        lastEnds = [null, null];
        lastViewBlock = null;
        if (rules) {
            rules = '';
            sheet.replaceSync('');
        }
    }

    function write(parent) {
        const kept = [view, caret].filter(r => r).sort((a, b) => a[0] - b[0]);
        const gaps = [];
        let next = 1;
        for (const [first, last] of kept) {
            if (first > next)
                gaps.push([next, first - 1]);
            next = Math.max(next, last + 1);
        }
        const at = parent === document.body ? 'body > ' : 'body > :only-child > ';
        const selectors = gaps.map(([a, b]) => at + ':nth-child(n+' + a + '):nth-child(-n+' + b
                                                   + ')');
        selectors.push(at + ':nth-child(n+' + next + ')');
        const text = '@media screen { :where(' + selectors.join(', ')
                     + ') { content-visibility: hidden; } }';
        if (text === rules)
            return;
        rules = text;
        if (!document.adoptedStyleSheets.includes(sheet))
            document.adoptedStyleSheets = [...document.adoptedStyleSheets, sheet];
        sheet.replaceSync(text);
    }

    // The block in the middle of the view, or null when none is there.
    function viewBlock(parent) {
        const hit = document.elementFromPoint(window.innerWidth / 2, window.innerHeight / 2);
        return hit ? topBlock(hit, parent) : null;
    }

    // Moves the ranges to where the selection, and with lookAtView the view, are now, when
    // they have left them. The view is looked at only when it moved: finding its block
    // needs a layout, which a key press should not force early.
    function follow(lookAtView) {
        const parent = blockParent();
        if (!V.longDocument() || !parent) {
            showAll();
            return;
        }
        let changed = !rules;
        const s = document.getSelection();
        const ends = s && s.rangeCount ? [topBlock(s.anchorNode, parent),
                                          topBlock(s.focusNode, parent)] : [null, null];
        if (ends[0] !== lastEnds[0] || ends[1] !== lastEnds[1]) {
            lastEnds = ends;
            if (!ends[0] || !ends[1]) {
                // A selection from outside the blocks (all of them, say) keeps all.
                if (s && s.rangeCount && !s.isCollapsed) {
                    showAll();
                    return;
                }
                changed = changed || caret !== null;
                caret = null;
            } else {
                const a = indexOf(ends[0]);
                const b = ends[1] === ends[0] ? a : indexOf(ends[1]);
                const first = Math.min(a, b), last = Math.max(a, b);
                if (!caret || first - caret[0] < REACH / 2 || caret[1] - last < REACH / 2) {
                    changed = true;
                    caret = [Math.max(1, first - REACH), last + REACH];
                }
            }
        }
        const seen = lookAtView === true ? viewBlock(parent) : null;
        if (seen && seen !== lastViewBlock) {
            lastViewBlock = seen;
            const at = indexOf(seen);
            if (!view || at - view[0] < REACH / 2 || view[1] - at < REACH / 2) {
                changed = true;
                view = [Math.max(1, at - REACH), at + REACH];
            }
        } else if (!view) {
            changed = true;
            view = [1, 1 + REACH];
        }
        if (changed)
            write(parent);
    }

    function scrolled(e) {
        if (e.target === document)
            follow(true);
    }

    function listen() {
        document.addEventListener('selectionchange', follow, true);
        // Before the engine inserts: the caret's block must be rendered by then.
        document.addEventListener('beforeinput', follow, true);
        window.addEventListener('scroll', scrolled, true);
        window.addEventListener('resize', resized);
        window.addEventListener('keydown', documentEnds, true);
    }

    function resized() {
        follow(true);
    }

    // The engine finds the document's ends for Ctrl+Home and Ctrl+End through layout, which
    // skipped blocks do not have: on a long page it stopped at the start of the last block.
    // The caret goes to the first or last text shown instead, extending with Shift.
    function documentEnds(e) {
        if (!e.ctrlKey || e.altKey || e.metaKey || (e.key !== 'Home' && e.key !== 'End')
            || !V.longDocument() || !V.editable())
            return;
        const toEnd = e.key === 'End';
        const { elementKind, HIDDEN } = V.textClasses;
        const shown = n => /\S/.test(n.data) && elementKind(n.parentElement) !== HIDDEN;
        const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT, n =>
            shown(n) ? NodeFilter.FILTER_ACCEPT : NodeFilter.FILTER_SKIP);
        let node = null;
        if (toEnd) {
            let last = document.body;
            while (last.lastChild)
                last = last.lastChild;
            walker.currentNode = last;
            node = last.nodeType === Node.TEXT_NODE && shown(last) ? last : walker.previousNode();
        } else {
            node = walker.nextNode();
        }
        if (!node)
            return;
        e.preventDefault();
        const s = document.getSelection();
        const offset = toEnd ? node.data.length : 0;
        if (e.shiftKey && s.rangeCount)
            s.extend(node, offset);
        else
            s.collapse(node, offset);
        follow();
        node.parentElement.scrollIntoView({ block: toEnd ? 'end' : 'start' });
    }

    // A new document starts from the top; where the view really is waits for the first
    // frame, which lays the page out anyway (a load must not wait for that layout).
    V.onNewDocument(() => {
        showAll();
        listen();
        follow();
        requestAnimationFrame(() => follow(true));
    });
    // An operation may act on a selection made before the engine announced it.
    V.beforeOperations(() => {
        if (rules)
            follow();
    });
    listen();

    V.farBlocks = { showAll: showAll, rules: () => rules };
})();

// Operations only tests use, added to the adapter's world by the test helper; the product
// never ships them.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.testOperationsLoaded)
        return;
    V.testOperationsLoaded = true;

    const operations = {
        typingHostFrom: size => {
            V.typingHost.limits.from = size;
            return true;
        },
        // The block typed into as an editing host of its own, whether design mode is on, and
        // the block's outline.
        typingHost: () => {
            const block = V.typingHost.block();
            return [block ? block.textContent : null, document.designMode,
                    block ? getComputedStyle(block).outlineStyle : null];
        },
        // What the adapter offers, for checking the names the C++ side calls.
        operationNames: () => V.operationNames(),
        commandIds: () => V.commandIds(),
        images: () => Array.from(document.images, img => ({
            src: img.getAttribute('src') || '', url: img.src,
            loaded: img.complete && img.naturalWidth > 0 })),
        editorBaseUrl: () => {
            const base = V.editorBase();
            return base ? base.href : '';
        },
        computedStyle: (h, name, pseudo) =>
            getComputedStyle(V.nodeFor(h), pseudo || null).getPropertyValue(name),
        // Selects from the start of the first text holding from to the end of the next one
        // holding to.
        selectBetween: (from, to) => {
            const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
            let start = null, end = null;
            while (walker.nextNode()) {
                const t = walker.currentNode;
                if (!start && t.data.includes(from))
                    start = [t, t.data.indexOf(from)];
                if (start && t.data.includes(to))
                    end = [t, t.data.indexOf(to) + to.length];
            }
            if (!start || !end)
                return false;
            const r = document.createRange();
            r.setStart(start[0], start[1]);
            r.setEnd(end[0], end[1]);
            const s = document.getSelection();
            s.removeAllRanges();
            s.addRange(r);
            return true;
        },
        undoDepth: () => V.undoDepth(),
        detailMarks: () => V.detailMarks(),
        underlinedWords: () => V.underlinedWords(),
        tableRowWidths: h => V.tableRowWidths(h),
        // The selection's text as the engine gives it to the clipboard: rendered text only.
        engineSelectionText: () => document.getSelection().toString(),
        // Keeps the page busy, so that a call can be sure to outlast its bound.
        busy: (ms = 500) => {
            const end = performance.now() + ms;
            while (performance.now() < end) {}
            return true;
        },
        // The block typing lays out on its own, and whether it is too small for its text.
        typingBlock: () => {
            const el = V.typingBlock();
            return el ? { text: el.textContent, clipped: el.scrollHeight > el.clientHeight }
                      : null;
        },
    };

    for (const [name, fn] of Object.entries(operations))
        V.register(name, fn);
    // Looking must not change what is looked at.
    V.reads('typingHost', 'typingBlock', 'engineSelectionText');
})();

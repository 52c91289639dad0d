// Operations only tests use, added to the adapter's world by the test helper; the product
// never ships them.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.testOperationsLoaded)
        return;
    V.testOperationsLoaded = true;

    const operations = {
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
        // The block typing lays out on its own, and whether it is too small for its text.
        // Holds the page's script thread: an answer that cannot come within a short bound.
        busy: () => {
            const end = Date.now() + 300;
            while (Date.now() < end);
            return true;
        },
        typingBlock: () => {
            const el = V.typingBlock();
            return el ? { text: el.textContent, clipped: el.scrollHeight > el.clientHeight }
                      : null;
        },
    };

    for (const [name, fn] of Object.entries(operations))
        V.register(name, fn);
})();

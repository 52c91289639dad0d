// The spelling check's view of the document: the body's text nodes in reading order, read
// in one call, and selections and replacements addressed by node index and offset. The
// words themselves are found and checked on the C++ side.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.spellingLoaded)
        return;
    V.spellingLoaded = true;

    // Text that is no prose: its words are never checked.
    const SKIP = new Set(['SCRIPT', 'STYLE', 'NOSCRIPT', 'TEMPLATE', 'TEXTAREA', 'SELECT',
        'OPTION', 'OBJECT', 'EMBED', 'IFRAME', 'SVG', 'MATH']);
    // Where a run of text ends, so that words never join across it.
    const BOUNDARY = new Set(['ADDRESS', 'BLOCKQUOTE', 'BODY', 'BR', 'CAPTION', 'DD', 'DIV',
        'DL', 'DT', 'FORM', 'H1', 'H2', 'H3', 'H4', 'H5', 'H6', 'HR', 'IMG', 'INPUT', 'LI',
        'OBJECT', 'OL', 'P', 'PRE', 'SELECT', 'TABLE', 'TD', 'TH', 'TR', 'UL']);

    // The nodes of the last snapshot; indices in later calls refer to them.
    let nodes = [];

    function skipped(element) {
        return SKIP.has(element.tagName.toUpperCase())
               || element.hasAttribute(V.EDITOR_LAYER_ATTR);
    }

    // The first snapshot index at or after a boundary point, with the offset in that node.
    function indexOf(container, offset) {
        if (container.nodeType === Node.TEXT_NODE) {
            const i = nodes.indexOf(container);
            if (i >= 0)
                return [i, offset];
        }
        const point = document.createRange();
        point.setStart(container, offset);
        for (let i = 0; i < nodes.length; ++i) {
            if (point.comparePoint(nodes[i], nodes[i].data.length) >= 0)
                return [i, point.comparePoint(nodes[i], 0) >= 0 ? 0 : offset];
        }
        return [nodes.length, 0];
    }

    // { t: texts, l: index into langs per node, b: 1 where a run starts, langs, s: the
    // selection's end as [node, offset], d: the document's language }.
    function snapshot() {
        nodes = [];
        const out = { t: [], l: [], b: [], langs: [], s: [0, 0],
                      d: document.documentElement.getAttribute('lang') || '' };
        const body = document.body;
        if (!body)
            return out;
        const langIndex = new Map();
        const langOf = element => {
            const holder = element.closest('[lang]');
            const lang = holder ? holder.getAttribute('lang') : '';
            let i = langIndex.get(lang);
            if (i === undefined) {
                i = out.langs.length;
                out.langs.push(lang);
                langIndex.set(lang, i);
            }
            return i;
        };
        const walker = document.createTreeWalker(body,
            NodeFilter.SHOW_ELEMENT | NodeFilter.SHOW_TEXT, {
                acceptNode: n => (n.nodeType === Node.ELEMENT_NODE && skipped(n)
                                  ? NodeFilter.FILTER_REJECT : NodeFilter.FILTER_ACCEPT)
            });
        let brk = true;
        let lastBlock = null;
        for (let n = walker.nextNode(); n; n = walker.nextNode()) {
            if (n.nodeType === Node.ELEMENT_NODE) {
                if (BOUNDARY.has(n.tagName.toUpperCase()))
                    brk = true;
                continue;
            }
            let block = n.parentElement;
            while (block && !BOUNDARY.has(block.tagName.toUpperCase()))
                block = block.parentElement;
            nodes.push(n);
            out.t.push(n.data);
            out.l.push(langOf(n.parentElement));
            out.b.push(brk || block !== lastBlock ? 1 : 0);
            brk = false;
            lastBlock = block;
        }
        const selection = document.getSelection();
        if (selection.rangeCount) {
            const r = selection.getRangeAt(0);
            out.s = indexOf(r.endContainer, r.endOffset);
        }
        return out;
    }

    function nodeAt(i) {
        const node = nodes[i];
        if (!node || !node.isConnected)
            throw new Error('The document changed since its text was read');
        return node;
    }

    function select(a, ao, b, bo) {
        const range = document.createRange();
        range.setStart(nodeAt(a), ao);
        range.setEnd(nodeAt(b), bo);
        const selection = document.getSelection();
        selection.removeAllRanges();
        selection.addRange(range);
        const rect = range.getBoundingClientRect();
        if (rect.top < 0 || rect.bottom > window.innerHeight || rect.left < 0
            || rect.right > window.innerWidth)
            nodes[a].parentElement.scrollIntoView({ block: 'center', inline: 'nearest' });
        V.scheduleDisplayChanged();
        return true;
    }

    // Each edit is [node, offset, endNode, endOffset, text], in document order. They go in
    // as one undoable step, from the last backwards so that offsets stay valid; text inside
    // each node changes in place, so formatting around it stays. Returns [node, text] for
    // every node changed.
    function replace(edits) {
        const touched = new Map();
        for (const [a, , b] of edits) {
            nodeAt(a);
            nodeAt(b);
        }
        V.recorded(() => {
            for (let k = edits.length - 1; k >= 0; --k) {
                const [a, ao, b, bo, text] = edits[k];
                for (let i = b; i > a; --i) {
                    const node = nodes[i];
                    node.deleteData(0, i === b ? bo : node.data.length);
                    touched.set(i, node);
                }
                const first = nodes[a];
                first.replaceData(ao, (a === b ? bo : first.data.length) - ao, String(text));
                touched.set(a, first);
            }
        });
        return [...touched].map(([i, node]) => [i, node.data]);
    }

    // The node under the last context menu: the menu's request brings its text along, and
    // the snapshot becomes that node when the host says it took the text from there.
    let menuNode = null;

    function takeMenuNode(fromMenu) {
        if (fromMenu && menuNode)
            nodes = [menuNode];
    }

    // The text node under a point of the view, as a snapshot of that one node, and the
    // offset of the point in it; null where no text is.
    function textAt(x, y, forMenu) {
        if (forMenu)
            menuNode = null;
        const caret = document.caretRangeFromPoint(x, y);
        if (!caret || caret.startContainer.nodeType !== Node.TEXT_NODE
            || !V.inBody(caret.startContainer))
            return null;
        for (let e = caret.startContainer.parentElement; e; e = e.parentElement) {
            if (skipped(e))
                return null;
        }
        const node = caret.startContainer;
        if (forMenu)
            menuNode = node;
        else
            nodes = [node];
        const holder = node.parentElement.closest('[lang]');
        return [node.data, caret.startOffset, holder ? holder.getAttribute('lang') : ''];
    }

    V.register('spellingText', () => snapshot());
    V.register('spellingSelect', (a, ao, b, bo, fromMenu) => {
        takeMenuNode(fromMenu);
        return select(a, ao, b, bo);
    });
    V.register('spellingReplace', (edits, fromMenu) => {
        takeMenuNode(fromMenu);
        return replace(edits);
    });
    V.register('spellingTextAt', (x, y) => textAt(x, y, false));
    V.onContextMenu((x, y) => ({ textAt: textAt(x, y, true) }));
})();

// Marks for comments and line breaks while the "details" display switch is on. Style
// rules cannot draw either (a comment has no box, a line break takes no generated
// content), so the marks live in a layer of their own: a host element after the body
// whose closed shadow tree holds one badge per mark, positioned over the document. The
// host cannot be edited, takes no pointer events, is left out of the saved markup, and changes
// inside its shadow tree are invisible to the undo history's observer.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.marksLoaded || !V.EDITOR_LAYER_ATTR)
        return;
    V.marksLoaded = true;

    const LAYER_STYLE = ':host { all: initial; position: absolute; left: 0; top: 0; ' +
        'width: 0; height: 0; overflow: visible; pointer-events: none; ' +
        'z-index: 2147483647; user-select: none; }\n' +
        '.mark { position: absolute; box-sizing: border-box; white-space: nowrap; ' +
        'font: 8px/9px sans-serif; color: #555; background: rgba(255, 255, 221, 0.85); ' +
        'border: 1px solid #bb9; padding: 0 1px; }\n' +
        '@media print { :host { display: none !important; } }';
    // Marks sit on the top edge of their line, mostly above the text they stand in.
    const RAISE = 5;
    const COMMENT_MARK = '<!>';
    const BREAK_MARK = '\u21b5';

    let host = null;
    let layer = null;
    let frameQueued = false;
    // What the last update drew, for tests and for nothing else.
    let drawn = [];

    const bodyObserver = new MutationObserver(schedule);

    function wanted() {
        return !!(V.display.details && document.body && document.documentElement);
    }

    function ensureLayer() {
        if (host && host.isConnected && host.parentNode === document.documentElement)
            return;
        host = document.createElement('vantry-marks');
        host.setAttribute(V.EDITOR_LAYER_ATTR, '');
        // Out of editing's reach. (The inert attribute would do more, but this engine
        // then stops painting the whole page.)
        host.setAttribute('contenteditable', 'false');
        const root = host.attachShadow({ mode: 'closed' });
        const style = document.createElement('style');
        style.textContent = LAYER_STYLE;
        layer = document.createElement('div');
        root.append(style, layer);
        document.documentElement.appendChild(host);
    }

    function removeLayer() {
        bodyObserver.disconnect();
        if (host)
            host.remove();
        host = null;
        layer = null;
        drawn = [];
    }

    // A comment has no box: it is shown where the text before it ends, else where what
    // follows it starts, else at the top left of its parent.
    function commentRect(comment) {
        const range = document.createRange();
        for (let n = comment.previousSibling; n; n = n.previousSibling) {
            if (n.nodeType === Node.TEXT_NODE && n.data.trim()) {
                range.setStart(n, n.data.length - 1);
                range.setEnd(n, n.data.length);
                const r = range.getBoundingClientRect();
                if (r.width || r.height)
                    return new DOMRect(r.right, r.top, 0, r.height);
            } else if (n.nodeType === Node.ELEMENT_NODE) {
                const r = n.getBoundingClientRect();
                if (r.width || r.height)
                    return new DOMRect(r.right, r.top, 0, Math.min(r.height, 16));
            }
        }
        for (let n = comment.nextSibling; n; n = n.nextSibling) {
            if (n.nodeType === Node.TEXT_NODE && n.data.trim()) {
                range.setStart(n, 0);
                range.setEnd(n, 1);
                const r = range.getBoundingClientRect();
                if (r.width || r.height)
                    return new DOMRect(r.left, r.top, 0, r.height);
            } else if (n.nodeType === Node.ELEMENT_NODE) {
                const r = n.getBoundingClientRect();
                if (r.width || r.height)
                    return new DOMRect(r.left, r.top, 0, Math.min(r.height, 16));
            }
        }
        const parent = comment.parentElement;
        if (!parent || !parent.getClientRects().length)
            return null;
        const r = parent.getBoundingClientRect();
        return new DOMRect(r.left, r.top, 0, 16);
    }

    function breakRect(br) {
        if (!br.getClientRects().length)
            return null;
        const r = br.getBoundingClientRect();
        return new DOMRect(r.left, r.top, 0, r.height);
    }

    function collect() {
        const found = [];
        const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_COMMENT);
        while (walker.nextNode())
            found.push(['comment', walker.currentNode]);
        for (const br of document.body.getElementsByTagName('br'))
            found.push(['break', br]);
        return found;
    }

    function update() {
        frameQueued = false;
        if (!wanted()) {
            removeLayer();
            return;
        }
        ensureLayer();
        // Positions are taken against the host, which stands where the document starts
        // whatever margins and positioning the page gives its root.
        const origin = host.getBoundingClientRect();
        const fragment = document.createDocumentFragment();
        drawn = [];
        for (const [kind, node] of collect()) {
            const rect = kind === 'comment' ? commentRect(node) : breakRect(node);
            if (!rect)
                continue;
            const mark = document.createElement('span');
            mark.className = 'mark';
            mark.textContent = kind === 'comment' ? COMMENT_MARK : BREAK_MARK;
            const x = Math.round(rect.left - origin.left);
            const y = Math.round(rect.top - origin.top) - RAISE;
            mark.style.left = x + 'px';
            mark.style.top = y + 'px';
            fragment.appendChild(mark);
            drawn.push({ kind: kind, x: x, y: y });
        }
        layer.replaceChildren(fragment);
        bodyObserver.disconnect();
        bodyObserver.observe(document.body, { subtree: true, childList: true,
                                              characterData: true, attributes: true });
    }

    // Marks follow the document once a frame at most, however many changes came.
    function schedule() {
        if (frameQueued)
            return;
        frameQueued = true;
        requestAnimationFrame(update);
    }

    // A new document, or the switch turned: the layer follows before the call returns, so
    // the caller never sees a document without its marks or a stale layer.
    let seenDetails = false;
    function follow() {
        seenDetails = V.display.details;
        if (host && !host.isConnected)
            host = null;
        update();
    }
    V.onNewDocument(follow);
    V.onDisplaySet(() => {
        if (V.display.details !== seenDetails)
            follow();
    });
    follow();
    window.addEventListener('resize', () => { if (host) schedule(); });
    // The observer rests during a bulk operation; the marks follow once after it.
    V.beforeOperations(name => {
        if (V.isBulk(name))
            bodyObserver.disconnect();
    });
    V.afterOperations(name => {
        if (V.isBulk(name) && wanted())
            schedule();
    });

    V.detailMarks = () => drawn.slice();
})();

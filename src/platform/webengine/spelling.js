// The spelling check's view of the document: the body's text nodes in reading order, read
// in one call, and selections and replacements addressed by node index and offset. The
// words themselves are found and checked on the C++ side.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.spellingLoaded)
        return;
    V.spellingLoaded = true;

    // Text that is no prose: its words are never checked. Sets of local names, which need
    // no case folding in an HTML document.
    const SKIP = new Set(['script', 'style', 'noscript', 'template', 'textarea', 'select',
        'option', 'object', 'embed', 'iframe', 'svg', 'math']);
    // Where a run of text ends, so that words never join across it.
    const BOUNDARY = new Set(['address', 'blockquote', 'body', 'br', 'caption', 'dd', 'div',
        'dl', 'dt', 'form', 'h1', 'h2', 'h3', 'h4', 'h5', 'h6', 'hr', 'img', 'input', 'li',
        'object', 'ol', 'p', 'pre', 'select', 'table', 'td', 'th', 'tr', 'ul']);

    // The nodes of the last snapshot; indices in later calls refer to them.
    let nodes = [];

    function skipped(element) {
        return SKIP.has(element.localName)
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

    // { t: the texts joined, n: their lengths as one text of decimal numbers each ended by
    // a comma, l: per node the index into langs as one
    // character, b: per node "1" where a run starts, else "0", langs, s: the selection's
    // end as [node, offset], d: the document's language }. Packed into few values, since
    // every value costs as it crosses to C++. The walk carries the language and block of
    // the element it is in instead of looking them up per text node. The text nodes read
    // go into found, in the order of roots, each root read whole.
    function pack(roots, found) {
        const out = { t: '', n: '', l: '', b: '', langs: [], s: [0, 0],
                      d: document.documentElement.getAttribute('lang') || '' };
        const texts = [];
        const lengths = [];
        const langs = [];
        const breaks = [];
        const langIndex = new Map();
        const langId = lang => {
            let i = langIndex.get(lang);
            if (i === undefined) {
                i = out.langs.length;
                out.langs.push(lang);
                langIndex.set(lang, i);
            }
            return String.fromCharCode(i);
        };
        const addText = (node, lang, brk) => {
            found.push(node);
            const data = node.data;
            texts.push(data);
            lengths.push(data.length);
            langs.push(lang);
            breaks.push(brk ? '1' : '0');
        };
        let previous = null;
        for (const root of roots) {
            // Inline neighbours read on into each other; anything else starts a run.
            let brk = !previous || previous.nextSibling !== root || isBoundary(previous)
                      || isBoundary(root);
            previous = root;
            const holder = (root.nodeType === Node.ELEMENT_NODE ? root : root.parentElement)
                .closest('[lang]');
            let lang = langId(holder ? holder.getAttribute('lang') : '');
            if (root.nodeType === Node.TEXT_NODE) {
                addText(root, lang, brk);
                continue;
            }
            let block = root;
            let lastBlock = root;
            // The language and block of each element the walk is inside, but the innermost.
            const outer = [];
            let n = root.firstChild;
            while (n) {
                let enter = false;
                if (n.nodeType === Node.TEXT_NODE) {
                    addText(n, lang, brk || block !== lastBlock);
                    brk = false;
                    lastBlock = block;
                } else if (n.nodeType === Node.ELEMENT_NODE && !skipped(n)) {
                    const boundary = isBoundary(n);
                    if (boundary)
                        brk = true;
                    if (n.firstChild) {
                        outer.push(lang, block);
                        const own = n.getAttribute('lang');
                        if (own !== null)
                            lang = langId(own);
                        if (boundary)
                            block = n;
                        enter = true;
                    }
                }
                if (enter) {
                    n = n.firstChild;
                    continue;
                }
                while (n && !n.nextSibling) {
                    n = n.parentNode;
                    if (n === root || !n) {
                        n = null;
                        break;
                    }
                    block = outer.pop();
                    lang = outer.pop();
                }
                if (n)
                    n = n.nextSibling;
            }
        }
        out.t = texts.join('');
        out.n = lengths.length ? lengths.join(',') + ',' : '';
        out.l = langs.join('');
        out.b = breaks.join('');
        return out;
    }

    function isBoundary(node) {
        return node.nodeType === Node.ELEMENT_NODE && BOUNDARY.has(node.localName);
    }

    // Reads are numbered. While nodes is still the snapshot of read lastRead and nothing
    // under that body has changed, a caller holding that read gets no second walk. The
    // observer stops at the first change, so that typing after a read pays for one record.
    let lastRead = 0;
    let readBody = null;
    let readKept = false;
    const changes = new MutationObserver(forgetRead);

    function forgetRead() {
        readKept = false;
        changes.disconnect();
    }

    function selectionEnd() {
        const selection = document.getSelection();
        if (!document.body || !selection.rangeCount)
            return [0, 0];
        const r = selection.getRangeAt(0);
        return indexOf(r.endContainer, r.endOffset);
    }

    function snapshot(since) {
        if (changes.takeRecords().length)
            forgetRead();
        if (readKept && since === lastRead && document.body === readBody) {
            return { u: 1, r: lastRead, s: selectionEnd(),
                     d: document.documentElement.getAttribute('lang') || '' };
        }
        forgetRead();
        nodes = [];
        const out = pack(document.body ? [document.body] : [], nodes);
        out.s = selectionEnd();
        out.r = ++lastRead;
        readBody = document.body;
        readKept = true;
        if (readBody) {
            changes.observe(readBody, { subtree: true, childList: true, characterData: true,
                                        attributes: true });
        }
        return out;
    }

    // ---- the text in view -----------------------------------------------------------
    // The underlines read only the blocks in and near the view, so that a long page costs
    // no more than a short one. A block taller than the band is opened and its children
    // taken instead; the block with the caret is read too, wherever it is.
    let shown = [];
    let shownRead = false;

    // A node's box, or null for nodes that hold no prose.
    function boxOf(node) {
        if (node.nodeType === Node.ELEMENT_NODE)
            return skipped(node) ? null : node.getBoundingClientRect();
        if (node.nodeType !== Node.TEXT_NODE)
            return null;
        const range = document.createRange();
        range.selectNodeContents(node);
        return range.getBoundingClientRect();
    }

    // Boxes with no extent (inline elements split over lines, display: contents, white
    // space) cannot be placed; they are read whole rather than lost.
    function placed(box) {
        return box.width !== 0 || box.height !== 0;
    }

    function rootsInView(margin) {
        const top = -margin;
        const bottom = window.innerHeight + margin;
        const roots = [];
        const collect = container => {
            const kids = container.childNodes;
            // Children in flow stack downwards: the first one reaching into the band is
            // found by halving, so that a block of thousands of paragraphs costs a few
            // dozen boxes.
            let lo = 0;
            let hi = kids.length;
            while (lo < hi) {
                const mid = (lo + hi) >> 1;
                let k = mid;
                let box = null;
                for (; k < hi; ++k) {
                    box = boxOf(kids[k]);
                    if (box && placed(box))
                        break;
                }
                if (k < hi && box.bottom < top)
                    lo = k + 1;
                else
                    hi = mid;
            }
            for (let i = lo; i < kids.length; ++i) {
                const n = kids[i];
                const box = boxOf(n);
                if (!box)
                    continue;
                if (!placed(box)) {
                    roots.push(n);
                    continue;
                }
                if (box.top > bottom)
                    break;
                if (box.bottom < top)
                    continue;
                if (n.nodeType === Node.ELEMENT_NODE && n.firstElementChild
                    && box.height > bottom - top)
                    collect(n);
                else
                    roots.push(n);
            }
        };
        if (document.body)
            collect(document.body);
        const selection = document.getSelection();
        let caret = selection.rangeCount ? selection.focusNode : null;
        if (caret && caret.nodeType !== Node.ELEMENT_NODE)
            caret = caret.parentElement;
        while (caret && caret.parentElement && caret.parentElement !== document.body
               && !isBoundary(caret))
            caret = caret.parentElement;
        for (let e = caret; e && e !== document.body; e = e.parentElement) {
            if (skipped(e))
                caret = null;
        }
        if (caret && caret !== document.body && V.inBody(caret)
            && !roots.some(r => r.contains(caret) || caret.contains(r))) {
            let at = roots.findIndex(r =>
                caret.compareDocumentPosition(r) & Node.DOCUMENT_POSITION_FOLLOWING);
            roots.splice(at < 0 ? roots.length : at, 0, caret);
        }
        return roots;
    }

    function visibleSnapshot(margin) {
        shown = [];
        shownRead = true;
        return pack(rootsInView(Math.max(0, Number(margin) || 0)), shown);
    }

    // Runs fn once the page has been quiet for ms since the last call with the same
    // waiter. Timers never fire in this world while the page's own scripting is off;
    // frames do.
    function quietWaiter(ms, fn) {
        let last = 0;
        let waiting = false;
        const check = () => {
            if (performance.now() - last < ms) {
                requestAnimationFrame(check);
                return;
            }
            waiting = false;
            fn();
        };
        return () => {
            last = performance.now();
            if (!waiting) {
                waiting = true;
                requestAnimationFrame(check);
            }
        };
    }

    // Scrolling brings other text into view: the C++ side is told once the page rests.
    const scrollRested = quietWaiter(100, () => V.notify('viewScrolled'));
    function scrolled() {
        if (shownRead)
            scrollRested();
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
        if (fromMenu && menuNode) {
            nodes = [menuNode];
            forgetRead();
        }
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
        if (forMenu) {
            menuNode = node;
        } else {
            nodes = [node];
            forgetRead();
        }
        const holder = node.parentElement.closest('[lang]');
        return [node.data, caret.startOffset, holder ? holder.getAttribute('lang') : ''];
    }

    // ---- underlines -------------------------------------------------------------------
    // The words the C++ side found misspelt, underlined in a layer of their own like the
    // detail marks: a host after the body whose closed shadow tree holds one line per word
    // box. The words are live ranges, so the lines follow typing until the next check.
    const UNDERLINE_STYLE = ':host { all: initial; position: absolute; left: 0; top: 0; ' +
        'width: 0; height: 0; overflow: visible; pointer-events: none; ' +
        'z-index: 2147483646; user-select: none; }\n' +
        '.u { position: absolute; height: 0; border-bottom: 2px dotted #e00000; }\n' +
        '@media print { :host { display: none !important; } }';
    let underlined = [];
    let lineHost = null;
    let lineLayer = null;
    // Lines follow edits a little behind the keys, so that typing in a page with many
    // misspelt words never waits for them.
    const scheduleLines = quietWaiter(100, drawLines);
    const lineObserver = new MutationObserver(scheduleLines);

    function drawLines() {
        if (!underlined.length || !document.body) {
            lineObserver.disconnect();
            if (lineHost)
                lineHost.remove();
            lineHost = null;
            lineLayer = null;
            return;
        }
        if (!lineHost || !lineHost.isConnected) {
            lineHost = document.createElement('vantry-underlines');
            lineHost.setAttribute(V.EDITOR_LAYER_ATTR, '');
            lineHost.setAttribute('contenteditable', 'false');
            const root = lineHost.attachShadow({ mode: 'closed' });
            const style = document.createElement('style');
            style.textContent = UNDERLINE_STYLE;
            lineLayer = document.createElement('div');
            root.append(style, lineLayer);
            document.documentElement.appendChild(lineHost);
        }
        const origin = lineHost.getBoundingClientRect();
        const fragment = document.createDocumentFragment();
        for (const range of underlined) {
            if (range.collapsed)
                continue;
            for (const r of range.getClientRects()) {
                const line = document.createElement('div');
                line.className = 'u';
                line.style.left = Math.round(r.left - origin.left) + 'px';
                line.style.top = Math.round(r.bottom - origin.top - 1) + 'px';
                line.style.width = Math.max(1, Math.round(r.width)) + 'px';
                fragment.appendChild(line);
            }
        }
        lineLayer.replaceChildren(fragment);
        lineObserver.disconnect();
        lineObserver.observe(document.body, { subtree: true, childList: true,
                                              characterData: true, attributes: true });
    }

    // Each word is [node, offset, endNode, endOffset] of the last read of the text in
    // view; an empty list takes every line away. Words whose nodes left the document are
    // dropped.
    function underline(words) {
        underlined = [];
        for (const [a, ao, b, bo] of words) {
            const start = shown[a];
            const end = shown[b];
            if (!start || !end || !start.isConnected || !end.isConnected)
                continue;
            const range = document.createRange();
            range.setStart(start, Math.min(ao, start.data.length));
            range.setEnd(end, Math.min(bo, end.data.length));
            underlined.push(range);
        }
        drawLines();
        return underlined.length;
    }

    function redrawLines() {
        if (underlined.length)
            scheduleLines();
    }

    // A bulk operation's changes would each make a record for the lines' observer: it rests
    // while one runs, and the lines are drawn again once after it.
    V.beforeOperations(name => {
        if (V.isBulk(name)) {
            lineObserver.disconnect();
            forgetRead();
        }
    });
    V.afterOperations(name => {
        if (V.isBulk(name))
            redrawLines();
    });

    // Loading a document takes the window's listeners away.
    function listen() {
        window.addEventListener('scroll', scrolled, true);
        window.addEventListener('resize', redrawLines);
    }

    listen();
    V.onNewDocument(() => {
        forgetRead();
        shownRead = false;
        underline([]);
        listen();
    });
    // The underlined words, for tests.
    V.underlinedWords = () => underlined.map(range => range.toString());

    V.register('spellingText', since => snapshot(since));
    V.register('spellingVisibleText', margin => visibleSnapshot(margin));
    V.register('spellingUnderline', words => underline(words));
    V.register('spellingSelect', (a, ao, b, bo, fromMenu) => {
        takeMenuNode(fromMenu);
        return select(a, ao, b, bo);
    });
    V.register('spellingReplace', (edits, fromMenu) => {
        takeMenuNode(fromMenu);
        return replace(edits);
    });
    V.register('spellingTextAt', (x, y) => textAt(x, y, false));
    V.reads('spellingText', 'spellingVisibleText', 'spellingUnderline', 'spellingTextAt');
    V.onContextMenu((x, y) => ({ textAt: textAt(x, y, true) }));
})();

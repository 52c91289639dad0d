// Range handles, the selection and control selections, and writing text into ranges,
// loaded after reader.js. Positions are those of the reader's view (see reader.js).
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.selection || !V.reader)
        return;
    const { Reader, pos, afterNode, body, startOf, setBounds, startPos, endPos, comparePos,
            indexOf, moveBy, textBetween, contains } = V.reader;

    // ---- writing text ---------------------------------------------------------------------

    const LINE_ENDS = /\r\n|\r|\n/;

    function textFragment(text) {
        const fragment = document.createDocumentFragment();
        text.split(LINE_ENDS).forEach((line, i) => {
            if (i > 0)
                fragment.appendChild(document.createElement('br'));
            if (line)
                fragment.appendChild(document.createTextNode(line));
        });
        return fragment;
    }

    let scratchRange = null;
    function scratchDomRange() {
        if (!scratchRange)
            scratchRange = document.createRange();
        return scratchRange;
    }

    // Replaces what lies between s and e with plain text; returns the new text's bounds.
    function replaceText(s, e, text) {
        if (s.t === 1 && e.t === 1 && s.n === e.n && !LINE_ENDS.test(text)) {
            s.n.replaceData(s.k, e.k - s.k, text);
            return { s: { t: 1, n: s.n, k: s.k }, e: { t: 1, n: s.n, k: s.k + text.length } };
        }
        const r = scratchDomRange();
        setBounds(r, s, e);
        deleteContents(r);
        const root = body();
        if (!text) {
            const p = startPos(root, r);
            return { s: p, e: p };
        }
        const fragment = textFragment(text);
        const first = fragment.firstChild, last = fragment.lastChild;
        r.insertNode(fragment);
        return { s: pos(2, first), e: afterNode(last) };
    }

    // ---- deleting across table cells ------------------------------------------------------

    const TABLE_PARTS = new Set(['TABLE', 'CAPTION', 'COLGROUP', 'COL', 'THEAD', 'TBODY', 'TFOOT',
                                 'TR', 'TD', 'TH']);
    const isTablePart = n => n.nodeType === 1 && TABLE_PARTS.has(n.tagName);
    // Content may stand in these; in the other parts it would end up directly in a row.
    const holdsContent = n => n.tagName === 'TD' || n.tagName === 'TH' || n.tagName === 'CAPTION';

    // Whether a plain DOM deletion of the range would take cells, rows or sections out of a
    // table that itself stays.
    function crossesTableParts(r) {
        const common = r.commonAncestorContainer;
        if (isTablePart(common) && !holdsContent(common))
            return true;
        for (const end of [r.startContainer, r.endContainer]) {
            for (let n = end; n && n !== common; n = n.parentNode) {
                if (isTablePart(n))
                    return true;
            }
        }
        return false;
    }

    // Empties the cells of a table part that lies wholly in a deleted range.
    function emptyCells(part) {
        if (holdsContent(part)) {
            part.replaceChildren();
            return;
        }
        const rows = part.tagName === 'TR' ? [part] : Array.from(part.rows || []);
        for (const tr of rows) {
            for (const cell of tr.cells)
                cell.replaceChildren();
        }
    }

    // The child of parent that holds node, or null.
    function childHolding(parent, node) {
        for (let n = node; n && n.parentNode; n = n.parentNode) {
            if (n.parentNode === parent)
                return n;
        }
        return null;
    }

    function clearRange(r) {
        if (!crossesTableParts(r)) {
            r.deleteContents();
            return;
        }
        const common = r.commonAncestorContainer;
        const startChild = r.startContainer === common ? null : childHolding(common, r.startContainer);
        const endChild = r.endContainer === common ? null : childHolding(common, r.endContainer);
        const from = startChild || common.childNodes[r.startOffset];
        const stop = endChild ? endChild.nextSibling : common.childNodes[r.endOffset];
        const children = [];
        for (let n = from; n && n !== stop; n = n.nextSibling)
            children.push(n);
        for (const child of children) {
            if (child === startChild || child === endChild) {
                const part = document.createRange();
                part.selectNodeContents(child);
                if (child === startChild)
                    part.setStart(r.startContainer, r.startOffset);
                else
                    part.setEnd(r.endContainer, r.endOffset);
                clearRange(part);
            } else if (isTablePart(child) && child.tagName !== 'TABLE') {
                emptyCells(child);
            } else {
                child.remove();
            }
        }
    }

    // Moves a point that stands between table parts into the nearest cell.
    function settleInCell(r) {
        const at = r.startContainer;
        if (at.nodeType !== 1 || !isTablePart(at) || holdsContent(at))
            return;
        const cells = Array.from(at.querySelectorAll('td, th'));
        const next = cells.find(cell => r.comparePoint(cell, 0) >= 0);
        const cell = next || cells[cells.length - 1];
        if (!cell)
            return;
        r.setStart(cell, next ? 0 : cell.childNodes.length);
        r.collapse(true);
    }

    // Deletes the range's content the way the engine's Cut does: cells and rows the range
    // runs through stay and only lose their content, so a table is never left ragged, and
    // what goes in afterwards lands in a cell, never directly in a row. A table lying wholly
    // in the range goes with it. The range ends collapsed where it started.
    function deleteContents(r) {
        clearRange(r);
        r.collapse(true);
        settleInCell(r);
    }

    // ---- bookmarks ------------------------------------------------------------------------

    // A bookmark names the range's two points by their paths from the body, so it stays
    // a plain text the caller can keep.
    function pathOf(root, container, offset) {
        const steps = [];
        for (let n = container; n && n !== root; n = n.parentNode)
            steps.push(indexOf(n));
        if (container !== root && !root.contains(container))
            throw new Error('The range lies outside the body');
        return steps.reverse().join('.') + ':' + offset;
    }

    function pointOf(root, path) {
        const [steps, offset] = path.split(':');
        let n = root;
        if (steps) {
            for (const step of steps.split('.')) {
                n = n.childNodes[Number(step)];
                if (!n)
                    return null;
            }
        }
        const max = n.nodeType === 3 ? n.data.length : n.childNodes.length;
        return [n, Math.min(Math.max(Number(offset) || 0, 0), max)];
    }

    function bookmarkOf(root, r) {
        return 'VB1|' + pathOf(root, r.startContainer, r.startOffset) + '|'
               + pathOf(root, r.endContainer, r.endOffset);
    }

    // Sets r to the bookmark's points; false when the bookmark does not fit the document.
    function applyBookmark(root, r, bookmark) {
        const parts = String(bookmark).split('|');
        if (parts.length !== 3 || parts[0] !== 'VB1')
            return false;
        const start = pointOf(root, parts[1]), end = pointOf(root, parts[2]);
        if (!start || !end)
            return false;
        r.setStart(start[0], start[1]);
        r.setEnd(end[0], end[1]);
        return true;
    }

    // ---- range handles ------------------------------------------------------------------

    // Live ranges slow every edit a little, so a range lives only as long as the host holds
    // its handle: the host hands back the handles it dropped with its next call. Nothing is
    // evicted behind the host's back, so a range kept for a search stays usable.
    const ranges = new Map();
    let nextRange = 1;

    function newHandle(entry) {
        const id = nextRange++;
        ranges.set(id, entry);
        return { id: id, generation: V.generation(), range: true };
    }

    function textHandle(range) {
        return newHandle({ text: range });
    }

    function entryFor(h) {
        if (!h || h.generation !== V.generation())
            throw new Error('The range belongs to a document that is no longer loaded');
        const entry = ranges.get(h.id);
        if (!entry)
            throw new Error('Unknown range handle ' + h.id);
        return entry;
    }

    function textRangeFor(h) {
        const entry = entryFor(h);
        if (!entry.text)
            throw new Error('The range holds controls, not text');
        return entry.text;
    }

    function bodyRange() {
        const root = body();
        const r = document.createRange();
        r.selectNodeContents(root);
        return r;
    }

    // ---- the selection --------------------------------------------------------------------

    let control = null;         // the element selected whole, or null
    let controlBounds = null;   // the document selection set for it
    let frameSheet = null;
    let frameHidden = false;    // while the engine copies the control

    // The frame is a rule in a constructed style sheet, so nothing of it is in the markup.
    function selectorFor(el) {
        const steps = [];
        for (let n = el; n && n !== document.body; n = n.parentElement) {
            let i = 1;
            for (let s = n.previousElementSibling; s; s = s.previousElementSibling)
                ++i;
            steps.unshift(':nth-child(' + i + ')');
        }
        return 'body > ' + steps.join(' > ');
    }

    function drawFrame() {
        try {
            if (!frameSheet)
                frameSheet = new CSSStyleSheet();
            // On screen only: the frame must not be printed.
            const framed = frameHidden ? null : control;
            frameSheet.replaceSync(framed ? '@media screen { ' + selectorFor(framed)
                                            + ' { outline: 2px solid #3367d6 !important; '
                                            + 'outline-offset: 1px !important; } }'
                                          : '');
            if (!document.adoptedStyleSheets.includes(frameSheet))
                document.adoptedStyleSheets = [...document.adoptedStyleSheets, frameSheet];
        } catch (e) {
            // Without constructed sheets the selection works, only unframed.
        }
    }

    function sameBounds(r, b) {
        return r.startContainer === b[0] && r.startOffset === b[1] && r.endContainer === b[2]
               && r.endOffset === b[3];
    }

    function setControl(el) {
        control = el;
        const selection = document.getSelection();
        const r = document.createRange();
        r.selectNode(el);
        selection.removeAllRanges();
        selection.addRange(r);
        const now = selection.rangeCount ? selection.getRangeAt(0) : r;
        controlBounds = [now.startContainer, now.startOffset, now.endContainer, now.endOffset];
        drawFrame();
        V.scheduleDisplayChanged();
    }

    function clearControl() {
        if (!control)
            return;
        control = null;
        controlBounds = null;
        drawFrame();
    }

    // The element selected whole, if the document selection still stands on it.
    function currentControl() {
        if (!control)
            return null;
        const selection = document.getSelection();
        if (!control.isConnected || !document.body || !document.body.contains(control)
            || !selection || selection.rangeCount === 0
            || !sameBounds(selection.getRangeAt(0), controlBounds))
            clearControl();
        return control;
    }

    function removeControl() {
        const el = currentControl();
        if (!el)
            return false;
        const r = document.createRange();
        r.setStartBefore(el);
        r.collapse(true);
        clearControl();
        el.remove();
        const selection = document.getSelection();
        selection.removeAllRanges();
        selection.addRange(r);
        V.notify('contentChanged');
        V.scheduleDisplayChanged();
        return true;
    }

    function selectText(r) {
        clearControl();
        const selection = document.getSelection();
        selection.removeAllRanges();
        selection.addRange(r.cloneRange());
    }

    // The selection's range as a live range in the body. Without a selection it is a caret
    // where a click at the top would put it: before the first thing a reader sees, inside
    // whatever blocks hold it.
    function selectionTextRange() {
        const root = body();
        const selection = document.getSelection();
        const r = document.createRange();
        if (selection && selection.rangeCount > 0) {
            const current = selection.getRangeAt(0);
            setBounds(r, startPos(root, current), endPos(root, current));
        } else {
            const first = new Reader(root).canonical(startOf(root));
            setBounds(r, first, first);
        }
        return r;
    }

    function selectionType() {
        if (currentControl())
            return 'Control';
        const selection = document.getSelection();
        if (!selection || selection.rangeCount === 0 || !document.body)
            return 'None';
        const r = selectionTextRange();
        return r.collapsed ? 'None' : 'Text';
    }

    // ---- clicking on objects --------------------------------------------------------------

    const CONTROL_TAGS = new Set(['IMG', 'INPUT', 'SELECT', 'TEXTAREA', 'BUTTON', 'OBJECT',
        'EMBED', 'IFRAME', 'APPLET', 'HR', 'VIDEO', 'AUDIO', 'CANVAS', 'MARQUEE']);
    const EDGE = 5;

    function isPositioned(el) {
        return el.style && el.style.position === 'absolute';
    }

    // The element a click chooses as a whole: an object or form control (the outermost
    // one around the target), a table clicked on its frame rather than in a cell, or a
    // positioned element clicked near its edge.
    function controlTarget(e) {
        const root = document.body;
        let t = e.target;
        if (!root || !t || t.nodeType !== 1 || t === root || !root.contains(t))
            return null;
        let chosen = null;
        for (let n = t; n && n !== root; n = n.parentElement) {
            if (CONTROL_TAGS.has(n.tagName))
                chosen = n;
        }
        if (chosen)
            return chosen;
        if (t.tagName === 'TABLE' || t.tagName === 'TBODY' || t.tagName === 'THEAD'
            || t.tagName === 'TFOOT' || t.tagName === 'TR')
            return t.closest('table');
        if (isPositioned(t)) {
            const box = t.getBoundingClientRect();
            const x = e.clientX, y = e.clientY;
            if (x - box.left < EDGE || box.right - x < EDGE || y - box.top < EDGE
                || box.bottom - y < EDGE)
                return t;
        }
        return null;
    }

    // The engine writes the computed styles of copied elements into the copied markup,
    // where the frame must not go along: it is off from the copy event until the engine has
    // written the clipboard.
    function hideFrameForCopy() {
        if (!control || frameHidden)
            return;
        frameHidden = true;
        drawFrame();
        const channel = new MessageChannel();
        channel.port1.onmessage = () => {
            channel.port1.close();
            frameHidden = false;
            // A cut took the element away.
            currentControl();
            drawFrame();
        };
        channel.port2.postMessage(null);
    }

    const listeners = {
        mousedown: e => {
            const target = controlTarget(e);
            if (target) {
                e.preventDefault();
                setControl(target);
            } else {
                clearControl();
            }
        },
        keydown: e => {
            if (!currentControl())
                return;
            if (e.key === 'Delete' || e.key === 'Backspace') {
                e.preventDefault();
                removeControl();
            }
        },
        selectionchange: () => {
            currentControl();
        },
        copy: hideFrameForCopy,
        cut: hideFrameForCopy,
    };

    function attachListeners() {
        // Adding the same function twice adds it once, so this may run for every document.
        for (const [type, fn] of Object.entries(listeners))
            document.addEventListener(type, fn, true);
    }

    // A new document (or a replaced body) drops the ranges and the control selection of
    // the old one; loading a document also drops every listener, so they go on again.
    function followDocument() {
        ranges.clear();
        control = null;
        controlBounds = null;
        scratchRange = null;
        attachListeners();
        drawFrame();
    }
    V.onNewDocument(followDocument);
    attachListeners();

    // ---- operations -----------------------------------------------------------------------

    function reader() {
        return new Reader(body());
    }

    function moveOp(which) {
        return (h, unit, count) => {
            const r = textRangeFor(h);
            const rd = reader();
            const root = rd.root;
            unit = String(unit).toLowerCase();
            count = Math.trunc(Number(count));
            if (!Number.isFinite(count))
                throw new Error('The count is not a number');
            const s = startPos(root, r), e = endPos(root, r);
            if (which === 'move') {
                const result = moveBy(rd, s, unit, count);
                setBounds(r, result.p, result.p);
                return result.moved;
            }
            const result = moveBy(rd, which === 'start' ? s : e, unit, count);
            if (which === 'start') {
                // A start moved past the end takes the end along, and the other way round.
                setBounds(r, result.p, comparePos(result.p, e) > 0 ? result.p : e);
            } else {
                setBounds(r, comparePos(result.p, s) < 0 ? result.p : s, result.p);
            }
            return result.moved;
        };
    }

    // The element that encloses what a reader sees of a range.
    function parentOf(r) {
        const rd = reader();
        const root = rd.root;
        const start = startPos(root, r), end = endPos(root, r);
        let n;
        if (rd.isEmptyBetween(start, end)) {
            // A caret: the element it stands in.
            n = r.startContainer;
        } else {
            // The element around the characters, not around tags at the edges.
            const s = rd.canonical(start);
            const c = rd.cursor(end);
            rd.prevItem(c);
            const inner = document.createRange();
            setBounds(inner, s, c.slotEnd());
            n = inner.commonAncestorContainer;
        }
        if (n.nodeType !== 1)
            n = n.parentNode;
        if (!n || (n !== root && !root.contains(n)))
            n = root;
        return n;
    }

    const operations = {
        selectionType: () => selectionType(),
        selectionRange: () => {
            const el = currentControl();
            return el ? newHandle({ controls: [el] }) : textHandle(selectionTextRange());
        },
        // Deletes what is selected: the control, or the selected text.
        selectionClear: () => {
            if (currentControl())
                return removeControl();
            const selection = document.getSelection();
            if (selection && selection.rangeCount > 0) {
                const r = selection.getRangeAt(0);
                if (!r.collapsed)
                    deleteContents(r);
            }
            return true;
        },
        selectElement: h => {
            const el = V.nodeFor(h);
            if (!el.isConnected || !body().contains(el) || el === document.body)
                throw new Error('Only an element inside the body can be selected');
            setControl(el);
            return true;
        },
        bodyRange: () => textHandle(bodyRange()),
        rangeIsControl: h => !entryFor(h).text,
        rangeLength: h => {
            const entry = entryFor(h);
            if (!entry.controls)
                throw new Error('A text range has no items');
            return entry.controls.length;
        },
        rangeItem: (h, index) => {
            const entry = entryFor(h);
            if (!entry.controls)
                throw new Error('A text range has no items');
            const el = entry.controls[index];
            if (!el)
                throw new Error('No item ' + index);
            return V.handleFor(el);
        },
        // The element that encloses what a reader sees of the range.
        rangeParentElement: h => V.handleFor(parentOf(textRangeFor(h))),
        rangeText: h => {
            const r = textRangeFor(h);
            const rd = reader();
            return textBetween(rd, startPos(rd.root, r), endPos(rd.root, r));
        },
        rangeSetText: (h, text) => {
            const r = textRangeFor(h);
            const root = body();
            const bounds = replaceText(startPos(root, r), endPos(root, r), String(text));
            setBounds(r, bounds.e, bounds.e);
            return true;
        },
        rangeHtmlText: h => {
            const r = textRangeFor(h);
            const holder = document.createElement('div');
            holder.appendChild(r.cloneContents());
            return V.withHints(holder.innerHTML);
        },
        // Puts parsed markup in place of the range; the range ends up after it.
        rangePasteHTML: (h, html) => {
            const r = textRangeFor(h);
            const template = document.createElement('template');
            template.innerHTML = String(html);
            const content = template.content;
            V.inertHints(content);
            const last = content.lastChild;
            deleteContents(r);
            if (last) {
                r.insertNode(content);
                r.setStartAfter(last);
                r.collapse(true);
            }
            return true;
        },
        rangeMove: moveOp('move'),
        rangeMoveStart: moveOp('start'),
        rangeMoveEnd: moveOp('end'),
        rangeCollapse: (h, toStart) => {
            textRangeFor(h).collapse(toStart !== false);
            return true;
        },
        rangeDuplicate: h => {
            const entry = entryFor(h);
            return entry.text ? textHandle(entry.text.cloneRange())
                              : newHandle({ controls: entry.controls.slice() });
        },
        rangeBookmark: h => bookmarkOf(body(), textRangeFor(h)),
        rangeMoveToBookmark: (h, bookmark) => applyBookmark(body(), textRangeFor(h), bookmark),
        // Whether inner lies inside outer, as a reader sees them.
        rangeInRange: (outer, inner) => {
            const o = textRangeFor(outer), i = textRangeFor(inner);
            const rd = reader();
            return contains(rd, o, startPos(rd.root, i), endPos(rd.root, i));
        },
        rangeIsEqual: (a, b) => {
            const ra = textRangeFor(a), rb = textRangeFor(b);
            const rd = reader();
            const root = rd.root;
            return comparePos(rd.canonical(startPos(root, ra)), rd.canonical(startPos(root, rb))) === 0
                   && comparePos(rd.canonical(endPos(root, ra)), rd.canonical(endPos(root, rb))) === 0;
        },
        rangeSelect: h => {
            const entry = entryFor(h);
            if (entry.controls) {
                if (entry.controls.length && entry.controls[0].isConnected)
                    setControl(entry.controls[0]);
            } else {
                selectText(entry.text);
            }
            return true;
        },
        releaseRanges: ids => {
            for (const id of ids)
                ranges.delete(id);
            return true;
        },
    };

    // Operations that change the document.
    const changing = new Set(['selectionClear', 'rangeSetText', 'rangePasteHTML']);
    for (const [name, fn] of Object.entries(operations))
        V.register(name, fn, changing.has(name));
    V.reads('releaseRanges');

    V.selection = { reader, textHandle, textRangeFor, bodyRange, currentControl, selectText,
                    parentOf, selectionTextRange, replaceText, bookmarkOf };
})();

// The reader's view of the body, under the text ranges of selection.js and search.js; loaded
// after texttags.js. The editor's commands were written against ranges that count characters
// the way a reader sees them, so positions here live in a reader's view of the body:
//
// - every visible character of a text node is one character; &nbsp; reads as a space;
// - outside preformatted text a run of white space is one space, and none at all at the
//   start or end of a line;
// - a BR, a line feed in preformatted text, and the boundary between blocks (paragraphs,
//   headings, cells, list items ...) are one line break, read as "\r\n"; adjacent block
//   boundaries make one break, and none stands before the first or after the last text;
// - an image, form control or other object is one character that reads as nothing;
// - scripts, styles and the like are not seen at all.
//
// Nothing is cached: each operation looks only at the few nodes around the positions it
// works on, so edits made anywhere (by the user, the engine or other operations) never
// leave a stale view behind. Ranges handed to C++ are live DOM ranges that follow edits.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.reader || !V.textClasses)
        return;
    const { INLINE, BLOCK, HIDDEN, ATOM, LINE_BREAK, RULE, PRES, OBJECT_CODE, BREAK_CODE,
            SPACE_CLASS, BREAK_CLASS, OBJECT_CLASS, elementKind, isSpace,
            wordClass } = V.textClasses;

    // ---- the reader's view -----------------------------------------------------------

    // What the cursor steps over.
    const NONE = -1, END = 0, CHAR = 1, OBJECT = 2, HARD = 3, SOFT = 4;
    const PRE_STYLE = /white-space\s*:\s*pre/i;

    // A position: {t: 1, n: text node, k: offset}, {t: 2, n: node} before a node, or
    // {t: 3, n: element} at the end of an element's content. A position before a text
    // node is always written as offset 0 in it, so that equal places compare equal.
    function pos(t, n, k) {
        if (t === 2 && n.nodeType === 3)
            return { t: 1, n: n, k: 0 };
        return { t: t, n: n, k: k || 0 };
    }

    function afterNode(n) {
        return n.nextSibling ? pos(2, n.nextSibling) : pos(3, n.parentNode);
    }

    function samePos(a, b) {
        return a.t === b.t && a.n === b.n && a.k === b.k;
    }

    // Walks the body slot by slot, forwards or backwards. A slot is a character of a text
    // node, an object, a line break element or a block boundary; inline tags, comments and
    // hidden elements are passed without a slot. A limit position ends the walk as END.
    class Cursor {
        constructor(root, p) {
            this.root = root;
            this.t = p.t;
            this.n = p.n;
            this.k = p.k;
            this.kind = NONE;
            this.node = null;   // the slot's text node or element
            this.off = 0;       // the character's offset in its text node
            this.enter = false; // for a block boundary: entering (true) or leaving
            this.limit = null;
        }

        position() {
            return { t: this.t, n: this.n, k: this.k };
        }

        atLimitForward() {
            const l = this.limit;
            return l.n === this.n && l.t === this.t && (this.t !== 1 || this.k >= l.k);
        }

        atLimitBackward() {
            const l = this.limit;
            return l.n === this.n && l.t === this.t && (this.t !== 1 || this.k <= l.k);
        }

        toAfter(n) {
            const s = n.nextSibling;
            if (s) {
                this.t = 2;
                this.n = s;
            } else {
                this.t = 3;
                this.n = n.parentNode;
            }
            this.k = 0;
        }

        toStartOf(el) {
            const f = el.firstChild;
            if (f) {
                this.t = 2;
                this.n = f;
            } else {
                this.t = 3;
                this.n = el;
            }
            this.k = 0;
        }

        next() {
            for (;;) {
                if (this.limit && this.atLimitForward())
                    return (this.kind = END);
                const n = this.n;
                if (this.t === 1) {
                    if (this.k < n.data.length) {
                        this.node = n;
                        this.off = this.k++;
                        return (this.kind = CHAR);
                    }
                    this.toAfter(n);
                } else if (this.t === 2) {
                    const type = n.nodeType;
                    if (type === 3) {
                        this.t = 1;
                        this.k = 0;
                    } else if (type !== 1) {
                        this.toAfter(n);
                    } else {
                        switch (elementKind(n)) {
                        case INLINE:
                            this.toStartOf(n);
                            break;
                        case BLOCK:
                            this.node = n;
                            this.enter = true;
                            this.toStartOf(n);
                            return (this.kind = SOFT);
                        case HIDDEN:
                            this.toAfter(n);
                            break;
                        case ATOM:
                            this.node = n;
                            this.toAfter(n);
                            return (this.kind = OBJECT);
                        case LINE_BREAK:
                            this.node = n;
                            this.toAfter(n);
                            return (this.kind = HARD);
                        default: // RULE
                            this.node = n;
                            this.enter = true;
                            this.toAfter(n);
                            return (this.kind = SOFT);
                        }
                    }
                } else {
                    if (n === this.root)
                        return (this.kind = END);
                    const block = elementKind(n) === BLOCK;
                    this.toAfter(n);
                    if (block) {
                        this.node = n;
                        this.enter = false;
                        return (this.kind = SOFT);
                    }
                }
            }
        }

        // Steps back over node p, which stands just before the cursor.
        stepBackOver(p) {
            const type = p.nodeType;
            this.k = 0;
            if (type === 3) {
                this.t = 1;
                this.n = p;
                this.k = p.data.length;
                return NONE;
            }
            if (type !== 1) {
                this.t = 2;
                this.n = p;
                return NONE;
            }
            switch (elementKind(p)) {
            case INLINE:
                this.t = 3;
                this.n = p;
                return NONE;
            case BLOCK:
                this.t = 3;
                this.n = p;
                this.node = p;
                this.enter = false;
                return SOFT;
            case HIDDEN:
                this.t = 2;
                this.n = p;
                return NONE;
            case ATOM:
                this.t = 2;
                this.n = p;
                this.node = p;
                return OBJECT;
            case LINE_BREAK:
                this.t = 2;
                this.n = p;
                this.node = p;
                return HARD;
            default: // RULE
                this.t = 2;
                this.n = p;
                this.node = p;
                this.enter = true;
                return SOFT;
            }
        }

        // The cursor stands at the start of el's content; steps out in front of el.
        stepOutBackwards(el) {
            if (el === this.root)
                return END;
            this.t = 2;
            this.n = el;
            this.k = 0;
            if (elementKind(el) === BLOCK) {
                this.node = el;
                this.enter = true;
                return SOFT;
            }
            return NONE;
        }

        prev() {
            for (;;) {
                if (this.limit && this.atLimitBackward())
                    return (this.kind = END);
                const n = this.n;
                let kind;
                if (this.t === 1) {
                    if (this.k > 0) {
                        this.node = n;
                        this.off = --this.k;
                        return (this.kind = CHAR);
                    }
                    this.t = 2;
                    continue;
                } else if (this.t === 2) {
                    const p = n.previousSibling;
                    kind = p ? this.stepBackOver(p) : this.stepOutBackwards(n.parentNode);
                } else {
                    const l = n.lastChild;
                    kind = l ? this.stepBackOver(l) : this.stepOutBackwards(n);
                }
                if (kind !== NONE)
                    return (this.kind = kind);
            }
        }

        // Where the slot last stepped over starts and ends.
        slotStart() {
            switch (this.kind) {
            case CHAR:
                return { t: 1, n: this.node, k: this.off };
            case SOFT:
                if (!this.enter && elementKind(this.node) === BLOCK)
                    return { t: 3, n: this.node, k: 0 };
                return pos(2, this.node);
            default:
                return pos(2, this.node);
            }
        }

        slotEnd() {
            switch (this.kind) {
            case CHAR:
                return { t: 1, n: this.node, k: this.off + 1 };
            case SOFT:
                if (this.enter && elementKind(this.node) === BLOCK) {
                    const f = this.node.firstChild;
                    return f ? pos(2, f) : pos(3, this.node);
                }
                return afterNode(this.node);
            default:
                return afterNode(this.node);
            }
        }
    }

    // Reads slots as a reader sees them. One instance serves one operation.
    class Reader {
        constructor(root) {
            this.root = root;
            this.preNode = null;
            this.preValue = false;
            this.preCache = new Map();
            this.seenCache = new Map();
            this.textWalker = null;
        }

        cursor(p) {
            return new Cursor(this.root, p);
        }

        isPre(textNode) {
            if (textNode === this.preNode)
                return this.preValue;
            this.preNode = textNode;
            this.preValue = this.preElement(textNode.parentNode);
            return this.preValue;
        }

        // Whether a text node is something a reader sees at all: not inside a hidden
        // element or an object.
        isVisibleText(textNode) {
            for (let e = textNode.parentNode; e && e !== this.root; e = e.parentNode) {
                let seen = this.seenCache.get(e);
                if (seen === undefined) {
                    const kind = elementKind(e);
                    seen = kind !== HIDDEN && kind !== ATOM;
                    this.seenCache.set(e, seen);
                }
                if (!seen)
                    return false;
            }
            return true;
        }

        // The next visible text node after node holding a place skip finds, as a position
        // there; null when there is none.
        nextCandidate(node, skip) {
            if (!this.textWalker)
                this.textWalker = document.createTreeWalker(this.root, NodeFilter.SHOW_TEXT);
            const walker = this.textWalker;
            walker.currentNode = node;
            for (let n = walker.nextNode(); n; n = walker.nextNode()) {
                const k = skip(n.data, 0);
                if (k < n.data.length && this.isVisibleText(n))
                    return { t: 1, n: n, k: k };
            }
            return null;
        }

        // Whether text in el keeps its white space. Cached for the operation: tags and
        // styles do not change while it runs.
        preElement(el) {
            if (!el || el === this.root || el.nodeType !== 1)
                return false;
            let pre = this.preCache.get(el);
            if (pre === undefined) {
                const style = el.getAttribute('style');
                pre = PRES.has(el.tagName) || (!!style && PRE_STYLE.test(style))
                      || this.preElement(el.parentNode);
                this.preCache.set(el, pre);
            }
            return pre;
        }

        // Whether the thing just before p is something a reader sees on the same line:
        // decides if a white space run starting at p shows as a space.
        contentBefore(p) {
            const c = this.cursor(p);
            for (;;) {
                const kind = c.prev();
                if (kind === CHAR) {
                    const code = c.node.data.charCodeAt(c.off);
                    if (this.isPre(c.node)) {
                        if (code === 13)
                            continue;
                        return code !== 10;
                    }
                    return !isSpace(code);
                }
                return kind === OBJECT;
            }
        }

        // Whether, after white space from p on, something a reader sees follows on the
        // same line.
        contentAfter(p) {
            const c = this.cursor(p);
            for (;;) {
                const kind = c.next();
                if (kind === CHAR) {
                    const code = c.node.data.charCodeAt(c.off);
                    if (this.isPre(c.node)) {
                        if (code === 13)
                            continue;
                        return code !== 10;
                    }
                    if (isSpace(code))
                        continue;
                    return true;
                }
                return kind === OBJECT;
            }
        }

        // A block boundary is a line break when it is the first one after something seen
        // and something seen (or a forced break) follows it.
        boundaryIsBreak(start, end) {
            const back = this.cursor(start);
            for (;;) {
                const kind = back.prev();
                if (kind === CHAR) {
                    const code = back.node.data.charCodeAt(back.off);
                    if (this.isPre(back.node)) {
                        if (code === 13)
                            continue;
                        if (code === 10)
                            return false;
                        break;
                    }
                    if (isSpace(code))
                        continue;
                    break;
                }
                if (kind === OBJECT)
                    break;
                return false;
            }
            const ahead = this.cursor(end);
            for (;;) {
                const kind = ahead.next();
                if (kind === CHAR) {
                    const code = ahead.node.data.charCodeAt(ahead.off);
                    if (code === 13 || (isSpace(code) && !this.isPre(ahead.node)))
                        continue;
                    return true;
                }
                if (kind === SOFT)
                    continue;
                return kind !== END;
            }
        }

        // The code a reader sees for the slot the cursor just stepped over: a character
        // code (&nbsp; and shown white space as 32), BREAK_CODE, OBJECT_CODE, or NONE.
        itemCode(c) {
            switch (c.kind) {
            case CHAR: {
                const node = c.node, off = c.off;
                const data = node.data;
                const code = data.charCodeAt(off);
                if (code === 160)
                    return 32;
                if (!isSpace(code))
                    return code;
                if (this.isPre(node)) {
                    if (code === 10)
                        return BREAK_CODE;
                    return code === 13 ? NONE : code;
                }
                // Only the first of a run of white space can show, and only between two
                // things a reader sees.
                if (off > 0) {
                    if (isSpace(data.charCodeAt(off - 1)))
                        return NONE;
                } else if (!this.contentBefore({ t: 1, n: node, k: 0 })) {
                    return NONE;
                }
                for (let i = off + 1; i < data.length; ++i) {
                    if (!isSpace(data.charCodeAt(i)))
                        return 32;
                }
                return this.contentAfter({ t: 1, n: node, k: data.length }) ? 32 : NONE;
            }
            case OBJECT:
                return OBJECT_CODE;
            case HARD:
                return BREAK_CODE;
            case SOFT:
                return this.boundaryIsBreak(c.slotStart(), c.slotEnd()) ? BREAK_CODE : NONE;
            default:
                return NONE;
            }
        }

        // Steps to the next (or previous) item a reader sees; returns its code or END.
        nextItem(c) {
            return this.stepToItem(c, () => c.next());
        }

        prevItem(c) {
            return this.stepToItem(c, () => c.prev());
        }

        stepToItem(c, step) {
            for (;;) {
                if (step() === END)
                    return END;
                const code = this.itemCode(c);
                if (code !== NONE)
                    return code;
            }
        }

        // The start of the first item at or after p (the end of the body when none):
        // every position in the same gap between two items maps to the same place.
        canonical(p) {
            const c = this.cursor(p);
            return this.nextItem(c) === END ? c.position() : c.slotStart();
        }

        // Whether nothing a reader sees lies between a and b.
        isEmptyBetween(a, b) {
            if (samePos(a, b))
                return true;
            const c = this.cursor(a);
            c.limit = b;
            return this.nextItem(c) === END;
        }
    }

    // ---- DOM points and positions ---------------------------------------------------

    function body() {
        const b = document.body;
        if (!b)
            throw new Error('The document has no body');
        return b;
    }

    function startOf(root) {
        return root.firstChild ? pos(2, root.firstChild) : pos(3, root);
    }

    function endOf(root) {
        return pos(3, root);
    }

    // The position of a DOM point, kept inside the body and outside atoms and hidden
    // elements (a point inside one stands in front of it).
    function fromPoint(root, container, offset) {
        if (container !== root && !root.contains(container)) {
            const order = root.compareDocumentPosition(container);
            return (order & Node.DOCUMENT_POSITION_PRECEDING) ? startOf(root) : endOf(root);
        }
        let outer = null;
        for (let e = container.nodeType === 1 ? container : container.parentNode;
            e && e !== root; e = e.parentNode) {
            const kind = elementKind(e);
            if (kind === ATOM || kind === HIDDEN || kind === LINE_BREAK || kind === RULE)
                outer = e;
        }
        if (outer)
            return pos(2, outer);
        if (container.nodeType === 3)
            return { t: 1, n: container, k: Math.min(offset, container.data.length) };
        if (container.nodeType !== 1)
            return pos(2, container);
        const child = container.childNodes[offset];
        return child ? pos(2, child) : pos(3, container);
    }

    function setStart(range, p) {
        if (p.t === 1)
            range.setStart(p.n, p.k);
        else if (p.t === 2)
            range.setStartBefore(p.n);
        else
            range.setStart(p.n, p.n.childNodes.length);
    }

    function setEnd(range, p) {
        if (p.t === 1)
            range.setEnd(p.n, p.k);
        else if (p.t === 2)
            range.setEndBefore(p.n);
        else
            range.setEnd(p.n, p.n.childNodes.length);
    }

    function setBounds(range, s, e) {
        setStart(range, s);
        setEnd(range, e);
    }

    function startPos(root, range) {
        return fromPoint(root, range.startContainer, range.startOffset);
    }

    function endPos(root, range) {
        return fromPoint(root, range.endContainer, range.endOffset);
    }

    // Document order of two positions: negative, zero or positive.
    const scratch = { a: null, b: null };
    function comparePos(a, b) {
        if (samePos(a, b))
            return 0;
        if (a.t === 1 && b.t === 1 && a.n === b.n)
            return a.k - b.k;
        if (!scratch.a) {
            scratch.a = document.createRange();
            scratch.b = document.createRange();
        }
        setStart(scratch.a, a);
        scratch.a.collapse(true);
        setStart(scratch.b, b);
        scratch.b.collapse(true);
        return scratch.a.compareBoundaryPoints(Range.START_TO_START, scratch.b);
    }

    function indexOf(n) {
        let i = 0;
        for (let s = n.previousSibling; s; s = s.previousSibling)
            ++i;
        return i;
    }

    // ---- moving by units ----------------------------------------------------------------

    // A word starts where a run of word characters or of punctuation begins; each object
    // is a word of its own. Spaces and line breaks only separate words.
    function startsWord(before, cls) {
        if (cls === SPACE_CLASS || cls === BREAK_CLASS)
            return false;
        return cls === OBJECT_CLASS || before !== cls;
    }

    // Moves p by count units; returns {p, moved}. Forward moves land after what they pass,
    // backward moves before it; the ends of the body stop a move.
    function moveBy(reader, p, unit, count) {
        let moved = 0;
        if (unit === 'textedit') {
            // The whole body: one unit to its end or start, if anything lies in between.
            const c = reader.cursor(p);
            const code = count > 0 ? reader.nextItem(c) : count < 0 ? reader.prevItem(c) : END;
            if (code === END)
                return { p: p, moved: 0 };
            return { p: count > 0 ? endOf(reader.root) : startOf(reader.root),
                     moved: Math.sign(count) };
        }
        if (unit === 'character') {
            const c = reader.cursor(p);
            while (moved < Math.abs(count)) {
                const code = count > 0 ? reader.nextItem(c) : reader.prevItem(c);
                if (code === END)
                    break;
                p = count > 0 ? c.slotEnd() : c.slotStart();
                ++moved;
            }
            return { p: p, moved: count > 0 ? moved : -moved };
        }
        if (unit !== 'word')
            throw new Error('Unknown unit ' + unit);
        for (; moved < Math.abs(count); ++moved) {
            const next = count > 0 ? nextWordStop(reader, p) : previousWordStop(reader, p);
            if (!next)
                break;
            p = next;
        }
        return { p: p, moved: count > 0 ? moved : -moved };
    }

    function nextWordStop(reader, p) {
        const c = reader.cursor(p);
        let code = reader.nextItem(c);
        if (code === END)
            return null;
        let before = wordClass(code);
        for (;;) {
            code = reader.nextItem(c);
            if (code === END)
                return c.position();
            const cls = wordClass(code);
            if (startsWord(before, cls))
                return c.slotStart();
            before = cls;
        }
    }

    function previousWordStop(reader, p) {
        const c = reader.cursor(p);
        let code = reader.prevItem(c);
        if (code === END)
            return null;
        let cls = wordClass(code);
        let start = c.slotStart();
        for (;;) {
            code = reader.prevItem(c);
            if (code === END)
                return cls === SPACE_CLASS || cls === BREAK_CLASS ? c.position() : start;
            const before = wordClass(code);
            if (startsWord(before, cls))
                return start;
            cls = before;
            start = c.slotStart();
        }
    }

    // ---- reading text ------------------------------------------------------------------

    function textBetween(reader, s, e) {
        const c = reader.cursor(s);
        c.limit = e;
        const parts = [];
        for (;;) {
            const code = reader.nextItem(c);
            if (code === END)
                break;
            if (code === BREAK_CODE)
                parts.push('\r\n');
            else if (code !== OBJECT_CODE)
                parts.push(String.fromCharCode(code));
        }
        return parts.join('');
    }

    function pointIn(r, p) {
        if (p.t === 1)
            return r.comparePoint(p.n, p.k) === 0;
        if (p.t === 3)
            return r.comparePoint(p.n, p.n.childNodes.length) === 0;
        return r.isPointInRange(p.n.parentNode, indexOf(p.n));
    }

    // Whether bounds s..e lie inside the range r.
    function contains(reader, r, s, e) {
        const root = reader.root;
        // A range over the whole body holds every place in it.
        if (r.startContainer === root && r.startOffset === 0 && r.endContainer === root
            && r.endOffset === root.childNodes.length)
            return true;
        // Inside by DOM order is inside for a reader too; only a place that merely looks
        // outside (the same gap between two characters, reached by another DOM point)
        // needs the reader's view.
        if (pointIn(r, s) && pointIn(r, e))
            return true;
        const rs = reader.canonical(startPos(root, r));
        const re = reader.canonical(endPos(root, r));
        return comparePos(rs, reader.canonical(s)) <= 0
               && comparePos(reader.canonical(e), re) <= 0;
    }

    // A new document: the scratch ranges belong to the old one.
    V.onNewDocument(() => {
        scratch.a = null;
    });

    V.reader = { END, CHAR, Reader, pos, afterNode, body, startOf, endOf, setBounds, startPos,
                 endPos, comparePos, indexOf, moveBy, textBetween, contains };
})();

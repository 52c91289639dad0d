// Text ranges, the selection and control selections, loaded into the adapter's world after
// adapter.js. The editor's commands were written against ranges that count characters the
// way a reader sees them, so positions here live in a reader's view of the body:
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
    if (!V || V.textRangesLoaded)
        return;
    V.textRangesLoaded = true;

    // ---- the reader's view -----------------------------------------------------------

    // What the cursor steps over.
    const NONE = -1, END = 0, CHAR = 1, OBJECT = 2, HARD = 3, SOFT = 4;
    // How an element takes part.
    const INLINE = 0, BLOCK = 1, HIDDEN = 2, ATOM = 3, LINE_BREAK = 4, RULE = 5;

    const BLOCKS = new Set(['ADDRESS', 'ARTICLE', 'ASIDE', 'BLOCKQUOTE', 'BODY', 'CAPTION',
        'CENTER', 'DD', 'DETAILS', 'DIALOG', 'DIR', 'DIV', 'DL', 'DT', 'FIELDSET',
        'FIGCAPTION', 'FIGURE', 'FOOTER', 'FORM', 'H1', 'H2', 'H3', 'H4', 'H5', 'H6', 'HEADER',
        'HGROUP', 'LEGEND', 'LI', 'LISTING', 'MAIN', 'MENU', 'NAV', 'OL', 'P', 'PLAINTEXT',
        'PRE', 'SECTION', 'SUMMARY', 'TABLE', 'TBODY', 'TD', 'TFOOT', 'TH', 'THEAD', 'TR', 'UL',
        'XMP']);
    const HIDDENS = new Set(['SCRIPT', 'STYLE', 'TEMPLATE', 'HEAD', 'TITLE', 'META', 'LINK',
        'BASE', 'NOEMBED', 'NOFRAMES', 'COLGROUP', 'COL', 'PARAM', 'DATALIST', 'AREA', 'SOURCE',
        'TRACK']);
    const ATOMS = new Set(['IMG', 'INPUT', 'SELECT', 'TEXTAREA', 'BUTTON', 'OBJECT', 'EMBED',
        'IFRAME', 'FRAME', 'APPLET', 'VIDEO', 'AUDIO', 'CANVAS', 'METER', 'PROGRESS', 'svg',
        'math']);
    const PRES = new Set(['PRE', 'LISTING', 'XMP', 'PLAINTEXT']);
    const PRE_STYLE = /white-space\s*:\s*pre/i;

    const OBJECT_CODE = 0xFFFC;
    const BREAK_CODE = 10;

    const KINDS = new Map([
        ...[...BLOCKS].map(tag => [tag, BLOCK]),
        ...[...HIDDENS].map(tag => [tag, HIDDEN]),
        ...[...ATOMS].map(tag => [tag, ATOM]),
        ['BR', LINE_BREAK],
        ['HR', RULE],
    ]);

    function elementKind(el) {
        const kind = KINDS.get(el.tagName);
        return kind === undefined ? INLINE : kind;
    }

    function isSpace(c) {
        return c === 32 || c === 10 || c === 9 || c === 13 || c === 12;
    }

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
            for (;;) {
                if (c.next() === END)
                    return END;
                const code = this.itemCode(c);
                if (code !== NONE)
                    return code;
            }
        }

        prevItem(c) {
            for (;;) {
                if (c.prev() === END)
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

    const SPACE_CLASS = 0, WORD_CLASS = 1, PUNCT_CLASS = 2, OBJECT_CLASS = 3, BREAK_CLASS = 4;
    const WORD_CHAR = /[\p{L}\p{N}\p{M}_]/u;

    function wordClass(code) {
        if (code === 32)
            return SPACE_CLASS;
        if (code === BREAK_CODE)
            return BREAK_CLASS;
        if (code === OBJECT_CODE)
            return OBJECT_CLASS;
        if (code < 128) {
            if ((code >= 48 && code <= 57) || (code >= 65 && code <= 90)
                || (code >= 97 && code <= 122) || code === 95)
                return WORD_CLASS;
            return PUNCT_CLASS;
        }
        if (code >= 0xD800 && code <= 0xDFFF)
            return WORD_CLASS;
        return WORD_CHAR.test(String.fromCharCode(code)) ? WORD_CLASS : PUNCT_CLASS;
    }

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

    // ---- reading and writing text ---------------------------------------------------

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

    // ---- finding --------------------------------------------------------------------------

    const lowerCache = new Map();
    function foldCase(code) {
        if (code < 128)
            return code >= 65 && code <= 90 ? code + 32 : code;
        let folded = lowerCache.get(code);
        if (folded === undefined) {
            const lower = String.fromCharCode(code).toLowerCase();
            folded = lower.length === 1 ? lower.charCodeAt(0) : code;
            lowerCache.set(code, folded);
        }
        return folded;
    }

    // The text searched for, as item codes: letter case folded, &nbsp; as a space, any
    // line end as one break.
    function needleOf(text) {
        const codes = [];
        const normalised = String(text).replace(/\r\n|\r/g, '\n');
        for (let i = 0; i < normalised.length; ++i) {
            const code = normalised.charCodeAt(i);
            codes.push(code === 160 ? 32 : foldCase(code));
        }
        const fail = new Array(codes.length).fill(0);
        for (let i = 1, k = 0; i < codes.length; ++i) {
            while (k > 0 && codes[i] !== codes[k])
                k = fail[k - 1];
            if (codes[i] === codes[k])
                ++k;
            fail[i] = k;
        }
        const m = codes.length;
        return { codes: codes, fail: fail, skip: skipperFor(codes), startNodes: new Array(m),
                 startOffsets: new Array(m), startPositions: new Array(m) };
    }

    // For a needle without white space, line breaks or objects, a function that gives the
    // next offset in a text node's data where a match can start: a whole match inside the
    // node, or a start whose match would go on into the next node. Inside one node such a
    // needle matches the raw characters exactly as it matches what a reader sees (white
    // space, shown or not, never equals a character of it). Null for other needles.
    function skipperFor(codes) {
        const m = codes.length;
        if (m === 0)
            return null;
        for (const code of codes) {
            if (code === 32 || code === BREAK_CODE || code === OBJECT_CODE || isSpace(code))
                return null;
        }
        const first = codes[0];
        const ch = String.fromCharCode(first);
        const upper = ch.toUpperCase();
        // Both case forms must be single characters; 'k' and 'å' also fold from the
        // Kelvin and Angstrom signs.
        if (upper.length !== 1 || first === 107 || first === 229)
            return null;
        const nextFirst = upper === ch ? (data, from) => data.indexOf(ch, from)
                                       : (data, from) => {
                                             const a = data.indexOf(ch, from);
                                             const b = data.indexOf(upper, from);
                                             return a < 0 ? b : b < 0 || a < b ? a : b;
                                         };
        return (data, from) => {
            const length = data.length;
            for (let k = nextFirst(data, from); k >= 0; k = nextFirst(data, k + 1)) {
                let j = 1;
                while (j < m && k + j < length && foldCase(data.charCodeAt(k + j)) === codes[j])
                    ++j;
                if (j === m || k + j === length)
                    return k;
            }
            return length;
        };
    }

    // Searches forward from s, not past limit (null: to the end of the body), ignoring
    // letter case and matching inside words. Returns the hit's bounds or null.
    function search(reader, s, limit, needle) {
        const m = needle.codes.length;
        if (m === 0)
            return null;
        const c = reader.cursor(s);
        c.limit = limit;
        // The last m items' starts; characters without an object each, as most items are.
        const startNodes = needle.startNodes, startOffsets = needle.startOffsets;
        const startPositions = needle.startPositions;
        let matched = 0, index = 0;
        const skip = needle.skip;
        for (;;) {
            // With nothing matched yet, characters of a text node that cannot start a match
            // need no look; whether they show does not matter then.
            if (matched === 0 && skip && c.t === 1) {
                const data = c.n.data;
                const k = skip(data, c.k);
                if (k < data.length || (limit && limit.n === c.n)) {
                    c.k = k;
                } else {
                    // Nothing more in this node: straight on to the next one that has a
                    // candidate, unless that lies past the limit.
                    const next = reader.nextCandidate(c.n, skip);
                    if (!next || (limit && comparePos(next, limit) >= 0))
                        return null;
                    c.n = next.n;
                    c.k = next.k;
                }
            }
            const code = reader.nextItem(c);
            if (code === END)
                return null;
            const folded = foldCase(code);
            while (matched > 0 && needle.codes[matched] !== folded)
                matched = needle.fail[matched - 1];
            if (needle.codes[matched] === folded)
                ++matched;
            const slot = index % m;
            if (c.kind === CHAR) {
                startNodes[slot] = c.node;
                startOffsets[slot] = c.off;
            } else {
                startNodes[slot] = null;
                startPositions[slot] = c.slotStart();
            }
            if (matched === m) {
                const first = (index - m + 1) % m;
                const s = startNodes[first] ? { t: 1, n: startNodes[first], k: startOffsets[first] }
                                            : startPositions[first];
                return { s: s, e: c.slotEnd() };
            }
            ++index;
        }
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
    let seenGeneration = null;
    function followDocument() {
        const generation = V.generation();
        if (generation === seenGeneration)
            return;
        seenGeneration = generation;
        pendingSelection = null;
        ranges.clear();
        control = null;
        controlBounds = null;
        scratch.a = null;
        scratchRange = null;
        attachListeners();
        drawFrame();
    }

    let pendingSelection = null;
    function applyPendingSelection() {
        const r = pendingSelection;
        pendingSelection = null;
        if (r && r.startContainer.isConnected)
            selectText(r);
    }

    const invokeAdapter = V.invoke;
    V.invoke = function (name, args) {
        followDocument();
        applyPendingSelection();
        const result = invokeAdapter(name, args);
        followDocument();
        return result;
    };
    attachListeners();

    // ---- replace all ----------------------------------------------------------------------

    // The whole replace-all loop in one call (a round trip per hit would cost seconds on a
    // large document). It repeats the single steps: find, accept a hit inside the kept
    // selection copy, select and replace it, move on a word. The pass starts at the
    // selection's start, so by the first hit beyond its end it has seen all of it; going
    // back to the start from there could only find the loop's own replacements again,
    // which never end when the replacement holds the searched text. The visible selection
    // is set once, at the end, where the last select would have left it.
    function replaceAll(inSelection, find, replacement) {
        const root = body();
        if (inSelection && currentControl())
            return { found: false, control: true };
        const initial = inSelection ? selectionTextRange() : bodyRange();
        const copy = initial.cloneRange();
        const bookmark = bookmarkOf(root, initial);
        const reader = new Reader(root);
        const needle = needleOf(find);
        const text = String(replacement);

        let s = startPos(root, initial), e = endPos(root, initial);
        let lastReplaced = null;
        let replaced = 0;

        const findHere = () => {
            const limit = reader.isEmptyBetween(s, e) ? null : e;
            const hit = search(reader, s, limit, needle);
            if (hit) {
                s = hit.s;
                e = hit.e;
            }
            return hit !== null;
        };
        // Right after replacement text that ends in a character, the word move can be left
        // out when what follows is no word character: up to the next word's start there is
        // then nothing a needle starting with a word character could match, so the next
        // search finds the same hit from here.
        const wordNeedle = needle.codes.length > 0 && wordClass(needle.codes[0]) === WORD_CLASS;
        const endsInCharacter = text.length > 0 && !isSpace(text.charCodeAt(text.length - 1));
        let afterReplacement = false;
        const advance = () => {
            if (afterReplacement && wordNeedle && endsInCharacter) {
                const c = reader.cursor(s);
                const code = c.next() === CHAR ? c.node.data.charCodeAt(c.off) : 32;
                if (isSpace(code) || wordClass(code) !== WORD_CLASS) {
                    e = s;
                    return;
                }
            }
            s = e = moveBy(reader, s, 'word', 1).p;
        };
        // The range ends up after the new text, as assigning a range's text leaves it.
        const replaceHere = () => {
            const bounds = replaceText(s, e, text);
            s = e = bounds.e;
            afterReplacement = true;
            lastReplaced = bounds.s;
            ++replaced;
        };
        let found = findHere();
        while (found) {
            afterReplacement = false;
            if (!contains(reader, copy, s, e)) {
                found = false;
                advance();
                break;
            }
            replaceHere();
            advance();
            found = findHere();
        }

        const searchRange = document.createRange();
        setBounds(searchRange, s, e);
        if (lastReplaced) {
            // Applied once the call has returned (or before the next operation): setting
            // the selection makes the engine lay out the whole changed document at once,
            // which it would otherwise do with the next frame anyway.
            const caret = document.createRange();
            setBounds(caret, lastReplaced, lastReplaced);
            pendingSelection = caret;
            // A posted message runs right after this call (timers do not run in this
            // world while the page's own scripts are off).
            const channel = new MessageChannel();
            channel.port1.onmessage = () => {
                channel.port1.close();
                applyPendingSelection();
            };
            channel.port2.postMessage(null);
        }
        return { found: found, replaced: replaced, search: textHandle(searchRange),
                 copy: textHandle(copy), bookmark: bookmark };
    }

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
        rangeParentElement: h => {
            const r = textRangeFor(h);
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
            return V.handleFor(n);
        },
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
        // Searches from the range's start: within the range when it holds text, else to the
        // end of the body. On a hit the range covers it.
        rangeFindText: (h, text) => {
            const r = textRangeFor(h);
            const rd = reader();
            const s = startPos(rd.root, r), e = endPos(rd.root, r);
            const hit = search(rd, s, rd.isEmptyBetween(s, e) ? null : e, needleOf(text));
            if (!hit)
                return false;
            setBounds(r, hit.s, hit.e);
            return true;
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
        replaceAll: (inSelection, find, replacement) => replaceAll(!!inSelection, find, replacement),
        releaseRanges: ids => {
            for (const id of ids)
                ranges.delete(id);
            return true;
        },

        // Elements.
        parentElement: h => {
            const parent = V.nodeFor(h).parentElement;
            return parent ? V.handleFor(parent) : null;
        },
        // The element and its ancestors up to the root, each with its tag name.
        elementPath: h => {
            const out = [];
            for (let n = V.nodeFor(h); n && n.nodeType === 1; n = n.parentElement)
                out.push([V.handleFor(n), n.tagName]);
            return out;
        },
        innerHTML: h => V.withHints(V.nodeFor(h).innerHTML),
        setInnerHTML: (h, html) => {
            const el = V.nodeFor(h);
            el.innerHTML = V.inertMarkup(html, el);
            return true;
        },
        setOuterHTML: (h, html) => {
            const el = V.nodeFor(h);
            if (!el.parentNode)
                throw new Error('The element is not in the document');
            el.outerHTML = V.inertMarkup(html, el.parentElement);
            return true;
        },
        removeAttribute: (h, name) => {
            V.nodeFor(h).removeAttribute(name);
            return true;
        },
        styleProperty: (h, name) => {
            const style = V.nodeFor(h).style;
            return style ? style.getPropertyValue(name) : '';
        },
        setStyleProperty: (h, name, value) => {
            const style = V.nodeFor(h).style;
            if (!style)
                throw new Error('The element has no style');
            if (value === null || value === '')
                style.removeProperty(name);
            else
                style.setProperty(name, String(value));
            return true;
        },
        imageElements: () => Array.from(document.images, img => V.handleFor(img)),
        scriptElements: () => Array.from(document.scripts, script => V.handleFor(script)),
    };

    for (const [name, fn] of Object.entries(operations))
        V.register(name, fn);
})();

// Searching the reader's view of the body, and replacing every hit in one call; loaded
// after selection.js.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.search || !V.selection)
        return;
    const { END, CHAR, Reader, body, setBounds, startPos, endPos, comparePos, moveBy,
            contains } = V.reader;
    const { OBJECT_CODE, BREAK_CODE, WORD_CLASS, isSpace, wordClass } = V.textClasses;
    const { reader, textHandle, textRangeFor, bodyRange, currentControl, selectText,
            selectionTextRange, replaceText, bookmarkOf } = V.selection;

    // ---- finding --------------------------------------------------------------------------

    const LINE_ENDS = /\r\n|\r|\n/;

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

    // The caret after the last replacement, set once replace all has returned.
    let pendingSelection = null;
    function applyPendingSelection() {
        const r = pendingSelection;
        pendingSelection = null;
        if (r && r.startContainer.isConnected)
            selectText(r);
    }
    V.onNewDocument(() => {
        pendingSelection = null;
    });
    V.beforeOperations(applyPendingSelection);

    // ---- replace all ----------------------------------------------------------------------

    // The next hit from p (no limit) for a needle with a skipper: straight from the text
    // nodes' data while hits lie inside one node, the reader's search for what does not.
    function nextHit(reader, p, needle) {
        if (p.t !== 1)
            return search(reader, p, null, needle);
        const m = needle.codes.length, skip = needle.skip;
        let n = p.n, k = p.k;
        for (;;) {
            const data = n.data;
            k = skip(data, k);
            if (k + m <= data.length)
                return { s: { t: 1, n: n, k: k }, e: { t: 1, n: n, k: k + m } };
            if (k < data.length)
                return search(reader, { t: 1, n: n, k: k }, null, needle);
            const next = reader.nextCandidate(n, skip);
            if (!next)
                return null;
            n = next.n;
            k = next.k;
        }
    }

    // Every hit of the loop below, found on the unchanged text, for a needle that starts
    // with a word character and holds no white space and a replacement of one line that
    // ends in a character: then what the loop reads after a replacement is the text that
    // followed the hit. Null as soon as a hit spans text nodes, which only the loop
    // rewrites right. Else the hits' nodes and offsets in document order, and the bounds
    // the loop would end on (in the unchanged text).
    function collectHits(reader, copy, s, e, needle) {
        let hit = search(reader, s, reader.isEmptyBetween(s, e) ? null : e, needle);
        const nodes = [], offsets = [];
        while (hit) {
            s = hit.s;
            e = hit.e;
            if (s.t !== 1 || e.t !== 1 || s.n !== e.n)
                return null;
            if (!contains(reader, copy, s, e)) {
                s = e = moveBy(reader, s, 'word', 1).p;
                break;
            }
            nodes.push(s.n);
            offsets.push(s.k);
            // A word character right after the hit sends the loop on past its word; the
            // search may start at the word's end instead, as only white space and breaks
            // can lie between that and the next word.
            const data = e.n.data;
            let k = e.k;
            let code = k < data.length ? data.charCodeAt(k) : -1;
            if (code < 0) {
                const c = reader.cursor(e);
                code = c.next() === CHAR ? c.node.data.charCodeAt(c.off) : 32;
            }
            let from = e;
            if (!isSpace(code) && wordClass(code) === WORD_CLASS) {
                while (k < data.length && !isSpace(data.charCodeAt(k))
                       && wordClass(data.charCodeAt(k)) === WORD_CLASS)
                    ++k;
                from = k < data.length ? { t: 1, n: e.n, k: k } : moveBy(reader, e, 'word', 1).p;
            }
            hit = nextHit(reader, from, needle);
            if (!hit)
                s = e = from === e ? e : moveBy(reader, e, 'word', 1).p;
        }
        return { nodes: nodes, offsets: offsets, s: s, e: e };
    }

    // Writes the collected hits from the last to the first, each as its own data change,
    // so that the offsets of those before it, and ranges other code holds, stay right. The
    // undo step gets one record per node, made here. Returns a function that maps a
    // position of the unchanged text after the last hit, and the start of the last
    // replacement.
    function writeHits(hits, length, text) {
        const { nodes, offsets } = hits;
        const records = [];
        for (let i = 0; i < nodes.length;) {
            const node = nodes[i], data = node.data;
            const parts = [];
            let at = 0;
            for (; i < nodes.length && nodes[i] === node; ++i) {
                parts.push(data.slice(at, offsets[i]), text);
                at = offsets[i] + length;
            }
            parts.push(data.slice(at));
            records.push({ type: 'characterData', target: node, oldValue: data,
                           newValue: parts.join('') });
        }
        V.recordWrites(records, () => {
            for (let i = nodes.length - 1; i >= 0; --i)
                nodes[i].replaceData(offsets[i], length, text);
        });
        const last = nodes.length - 1;
        const shift = text.length - length;
        let before = 0;
        for (let i = last - 1; i >= 0 && nodes[i] === nodes[last]; --i)
            ++before;
        const map = p => {
            if (p.t !== 1 || p.n !== nodes[last] || p.k < offsets[last] + length)
                return p;
            return { t: 1, n: p.n, k: p.k + shift * (before + 1) };
        };
        return { map: map, lastStart: { t: 1, n: nodes[last], k: offsets[last] + shift * before } };
    }

    // The whole replace-all loop in one call (a round trip per hit would cost seconds on a
    // large document). It repeats the single steps: find, accept a hit inside the kept
    // selection copy, select and replace it, move on a word. The pass starts at the
    // selection's start, so by the first hit beyond its end it has seen all of it; going
    // back to the start from there could only find the loop's own replacements again,
    // which never end when the replacement holds the searched text. The visible selection
    // is set once, at the end, where the last select would have left it. Where the hits
    // can be found before anything changes, they are, and written afterwards.
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
        let found = false;

        // Right after replacement text that ends in a character, the word move can be left
        // out when what follows is no word character: up to the next word's start there is
        // then nothing a needle starting with a word character could match, so the next
        // search finds the same hit from here.
        const wordNeedle = needle.codes.length > 0 && wordClass(needle.codes[0]) === WORD_CLASS;
        const endsInCharacter = text.length > 0 && !isSpace(text.charCodeAt(text.length - 1));
        const hits = needle.skip && wordNeedle && endsInCharacter && !LINE_ENDS.test(text)
                     ? collectHits(reader, copy, s, e, needle) : null;
        if (hits) {
            replaced = hits.nodes.length;
            s = hits.s;
            e = hits.e;
            if (replaced) {
                const written = writeHits(hits, needle.codes.length, text);
                s = written.map(s);
                e = written.map(e);
                lastReplaced = written.lastStart;
            }
        } else {
            const findHere = () => {
                const limit = reader.isEmptyBetween(s, e) ? null : e;
                const hit = search(reader, s, limit, needle);
                if (hit) {
                    s = hit.s;
                    e = hit.e;
                }
                return hit !== null;
            };
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
            found = findHere();
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
            // Queued ahead of the display change this call announces, so that the state
            // it carries is read once, with the selection in place.
            V.soon(applyPendingSelection);
        }
        return { found: found, replaced: replaced, search: textHandle(searchRange),
                 copy: textHandle(copy), bookmark: bookmark };
    }

    // Searches from the range's start: within the range when it holds text, else to the end
    // of the body. On a hit the range covers it.
    function rangeFindText(h, text) {
        const r = textRangeFor(h);
        const rd = reader();
        const s = startPos(rd.root, r), e = endPos(rd.root, r);
        const hit = search(rd, s, rd.isEmptyBetween(s, e) ? null : e, needleOf(text));
        if (!hit)
            return false;
        setBounds(r, hit.s, hit.e);
        return true;
    }

    V.register('rangeFindText', rangeFindText);
    V.register('replaceAll', (inSelection, find, replacement) =>
        replaceAll(!!inSelection, find, replacement), true, true);
})();

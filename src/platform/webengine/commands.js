// Editing commands by their numeric identifiers, loaded into the adapter's world after
// selection.js. Formatting goes through the engine's own editing commands, but for the
// simplest inline case; states are computed from the live selection. tables.js and
// positioning.js add their commands to the same table through V.defineCommand.
//
// Undo. The engine's undo stack only knows its own editing commands, so the adapter keeps
// one history of its own in which every step is either "native" (an engine edit: typing,
// formatting, paste) or a list of DOM mutation records of an adapter operation (tables,
// positioning, dragging). Undo takes the newest step: a native one goes back through the
// engine's undo, an adapter one is reverted from its records. Since steps are undone
// strictly newest first, each kind always finds the document exactly as it left it, and
// the engine never sees its own redo stack cleared by our DOM changes. Consecutive typing
// at the caret where the last typing ended is one native step, as the engine coalesces it.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.commandsLoaded)
        return;
    V.commandsLoaded = true;

    const NOT_SUPPORTED = 0, DISABLED = 1, ENABLED = 3, LATCHED = 7, NINCHED = 11;
    V.status = { NOT_SUPPORTED, DISABLED, ENABLED, LATCHED, NINCHED };
    const OPTION_DONT_PROMPT = 2;

    // ---- selection helpers -------------------------------------------------------------

    // After an inline format of the adapter's own, the selection it leaves is set only once
    // the answer has gone: setting it lays the page out, which the next frame does anyway.
    // Until then the adapter reads this one, and anything that may look at the engine's
    // selection sets it first.
    let pendingSelection = null;

    function selectionRange() {
        if (pendingSelection)
            return pendingSelection.range;
        const s = document.getSelection();
        return s && s.rangeCount ? s.getRangeAt(0) : null;
    }

    function applyPendingSelection() {
        const pending = pendingSelection;
        pendingSelection = null;
        if (!pending || !pending.range.startContainer.isConnected)
            return;
        const r = pending.range;
        const s = document.getSelection();
        if (pending.backwards)
            s.setBaseAndExtent(r.endContainer, r.endOffset, r.startContainer, r.startOffset);
        else
            s.setBaseAndExtent(r.startContainer, r.startOffset, r.endContainer, r.endOffset);
    }

    // The engine's answers about the selection. An inline format of the adapter's own
    // changes none of them but its own state, which is read from the document: answers
    // taken just before it stand for the states sent with it, and asking again would lay
    // the page out.
    let engineAnswers = null;
    function engineAnswer(kind, name) {
        const key = kind + ' ' + name;
        if (engineAnswers && engineAnswers.has(key))
            return engineAnswers.get(key);
        applyPendingSelection();
        const answer = kind === 'state' ? document.queryCommandState(name)
                       : kind === 'enabled' ? document.queryCommandEnabled(name)
                       : document.queryCommandValue(name);
        if (engineAnswers)
            engineAnswers.set(key, answer);
        return answer;
    }
    const engineState = name => engineAnswer('state', name);

    function inBody(node) {
        return !!(document.body && node && document.body.contains(node));
    }

    // The element the selection holds whole (a control selection), if any.
    function selectedElement() {
        const r = selectionRange();
        if (!r || r.startContainer !== r.endContainer || r.endOffset !== r.startOffset + 1)
            return null;
        const n = r.startContainer.childNodes[r.startOffset];
        return n && n.nodeType === 1 && inBody(n) ? n : null;
    }

    function elementAt(node) {
        if (!node)
            return null;
        return node.nodeType === 1 ? node : node.parentElement;
    }

    // The element a range starts in; a start between an element's children counts as in
    // the child after it, which is where typing would go.
    function startElement(r) {
        const c = r.startContainer;
        if (c.nodeType === 1 && r.collapsed) {
            const child = c.childNodes[r.startOffset] || c.lastChild;
            if (child && child.nodeType === 1 && child.tagName !== 'BR')
                return child;
        }
        return elementAt(c);
    }

    function caretElement() {
        const r = selectionRange();
        if (!r || !inBody(r.startContainer))
            return null;
        return selectedElement() || startElement(r);
    }

    function editing() {
        return V.editable();
    }

    // The text nodes the selection covers (partly or whole); for a caret, the one it is in.
    function selectedTextNodes(r) {
        const out = [];
        const root = r.commonAncestorContainer;
        if (root.nodeType === 3)
            return [root];
        const walker = document.createTreeWalker(root, NodeFilter.SHOW_TEXT);
        while (walker.nextNode()) {
            const t = walker.currentNode;
            if (!r.intersectsNode(t) || !t.data.trim())
                continue;
            if (t === r.endContainer && r.endOffset === 0)
                continue;
            if (t === r.startContainer && r.startOffset >= t.length)
                continue;
            out.push(t);
        }
        return out;
    }

    // Latched when every selected character has the property, ninched when only some do.
    function textState(test, nativeName) {
        if (!editing())
            return DISABLED;
        const r = selectionRange();
        if (!r || !inBody(r.startContainer))
            return DISABLED;
        if (r.collapsed)
            return engineState(nativeName) ? LATCHED : ENABLED;
        const nodes = selectedTextNodes(r);
        if (!nodes.length)
            return engineState(nativeName) ? LATCHED : ENABLED;
        let on = 0;
        for (const t of nodes) {
            if (test(t.parentElement))
                ++on;
        }
        return on === 0 ? ENABLED : on === nodes.length ? LATCHED : NINCHED;
    }

    const isBold = el => {
        const w = getComputedStyle(el).fontWeight;
        return w === 'bold' || w === 'bolder' || parseInt(w, 10) >= 600;
    };
    const isItalic = el => /italic|oblique/.test(getComputedStyle(el).fontStyle);
    const isUnderlined = el => {
        for (let n = el; n && n !== document.documentElement; n = n.parentElement) {
            if (/underline/.test(getComputedStyle(n).textDecorationLine))
                return true;
        }
        return false;
    };

    // One value for the whole selection, or null when the selected text disagrees.
    // While a status query runs, each reading is taken once: a reading command's state and
    // its value come from the same walk over the selection.
    let readings = null;
    function commonValue(read) {
        if (!readings)
            return readCommonValue(read);
        if (!readings.has(read))
            readings.set(read, readCommonValue(read));
        return readings.get(read);
    }

    function readCommonValue(read) {
        const r = selectionRange();
        if (!r || !inBody(r.startContainer))
            return undefined;
        const nodes = r.collapsed ? [] : selectedTextNodes(r);
        if (!nodes.length)
            return read(startElement(r));
        let value;
        for (const t of nodes) {
            const v = read(t.parentElement);
            if (value === undefined)
                value = v;
            else if (v !== value)
                return null;
        }
        return value;
    }

    function computedColor(el) {
        return getComputedStyle(el).color;
    }

    function firstFamily(el) {
        const family = getComputedStyle(el).fontFamily || '';
        return family.split(',')[0].trim().replace(/^["']|["']$/g, '');
    }

    // The HTML font size (1 to 7) nearest the computed pixel size.
    const HTML_SIZES = [10, 13, 16, 18, 24, 32, 48];
    function htmlFontSize(el) {
        const px = parseFloat(getComputedStyle(el).fontSize);
        let best = 0;
        for (let i = 1; i < HTML_SIZES.length; ++i) {
            if (Math.abs(HTML_SIZES[i] - px) < Math.abs(HTML_SIZES[best] - px))
                best = i;
        }
        return best + 1;
    }

    // ---- block formats --------------------------------------------------------------------

    const BLOCK_FORMATS = [
        ['Normal', 'P'], ['Formatted', 'PRE'], ['Address', 'ADDRESS'],
        ['Heading 1', 'H1'], ['Heading 2', 'H2'], ['Heading 3', 'H3'], ['Heading 4', 'H4'],
        ['Heading 5', 'H5'], ['Heading 6', 'H6'], ['Numbered List', 'OL'],
        ['Bulleted List', 'UL'], ['Directory List', 'DIR'], ['Menu List', 'MENU'],
        ['Definition Term', 'DT'], ['Definition', 'DD'], ['Paragraph', 'P'],
    ];

    function blockFormatOf(el) {
        for (let n = el; n && n !== document.body; n = n.parentElement) {
            const hit = BLOCK_FORMATS.find(f => f[1] === n.tagName && f[0] !== 'Paragraph');
            if (hit)
                return hit[0];
        }
        return 'Normal';
    }

    function setBlockFormat(name) {
        const hit = BLOCK_FORMATS.find(f => f[0].toLowerCase() === String(name).toLowerCase());
        if (!hit)
            throw new Error('Unknown block format ' + name);
        if (hit[1] === 'OL')
            return document.execCommand('insertOrderedList');
        if (hit[1] === 'UL' || hit[1] === 'DIR' || hit[1] === 'MENU')
            return document.execCommand('insertUnorderedList');
        return document.execCommand('formatBlock', false, hit[1]);
    }

    // ---- undo history ----------------------------------------------------------------------

    const undoSteps = [];
    const redoSteps = [];
    let lastTyping = null;    // where the last native typing left the caret
    let replaying = false;
    // Records delivered between tasks (during a drag) wait here for the step's end.
    const delivered = [];
    const observer = new MutationObserver(list => { delivered.push(...list); });
    const OBSERVE = { subtree: true, childList: true, attributes: true, characterData: true,
                      attributeOldValue: true, characterDataOldValue: true };

    function caretKey() {
        const r = selectionRange();
        return r && r.collapsed ? [r.startContainer, r.startOffset] : null;
    }

    function onBeforeInput(e) {
        if (replaying)
            return;
        if (e.inputType === 'historyUndo' || e.inputType === 'historyRedo') {
            // Keyboard undo and redo walk the same history as the commands.
            e.preventDefault();
            if (e.inputType === 'historyUndo')
                undo();
            else
                redo();
        }
    }

    const TYPING = new Set(['insertText', 'deleteContentBackward', 'deleteContentForward']);

    // Typing and deleting at the caret where the last of it ended go on one step, as the
    // engine's own typing does.
    function continuesTyping(inputType) {
        const last = undoSteps[undoSteps.length - 1];
        return TYPING.has(inputType) && last && last.native && last.typing && lastTyping
               && caretBefore && caretBefore[0] === lastTyping[0]
               && caretBefore[1] === lastTyping[1];
    }

    function onInput(e) {
        if (replaying || e.inputType === 'historyUndo' || e.inputType === 'historyRedo')
            return;
        const typing = TYPING.has(e.inputType);
        if (!continuesTyping(e.inputType)) {
            undoSteps.push({ native: true, typing: typing, block: blockBefore,
                             before: blockBefore ? htmlBefore : null });
        }
        redoSteps.length = 0;
        lastTyping = typing ? caretKey() : null;
    }

    let caretBefore = null;
    let blockBefore = null;   // the block a new typing step starts in, and its markup then
    let htmlBefore = null;
    function rememberCaret(e) {
        if (replaying || e.inputType === 'historyUndo' || e.inputType === 'historyRedo')
            return;
        caretBefore = caretKey();
        blockBefore = null;
        if (TYPING.has(e.inputType) && !continuesTyping(e.inputType)) {
            blockBefore = caretBlock();
            htmlBefore = blockBefore ? blockBefore.innerHTML : null;
        }
    }

    function caretBlock() {
        const r = selectionRange();
        for (let n = r ? r.startContainer : null; n && n !== document.body; n = n.parentNode) {
            if (n.nodeType === Node.ELEMENT_NODE
                && V.textClasses.elementKind(n) === V.textClasses.BLOCK)
                return n;
        }
        return null;
    }

    // The engine may end its own typing step where the history goes on with one (a
    // selection set to where the caret already was ends it): undoing a typing step takes
    // the engine's steps back until its block is as the step found it, each further one
    // only while it changes nothing outside that block. Returns how many it took.
    const probe = new MutationObserver(() => {});
    function undoNative(step) {
        document.execCommand('undo');
        let taken = 1;
        const block = step.block;
        while (block && block.isConnected && block.innerHTML !== step.before && taken < 64
               && document.queryCommandEnabled('undo')) {
            probe.observe(document.documentElement, OBSERVE);
            document.execCommand('undo');
            const outside = probe.takeRecords().some(m => !block.contains(m.target));
            probe.disconnect();
            if (outside) {
                document.execCommand('redo');
                break;
            }
            ++taken;
        }
        return taken;
    }

    // Starts recording the DOM mutations of one adapter step; the function returned ends
    // the step and files it in the history when it changed anything. Only a step the user
    // made directly (a drag) is announced as a content change: the host learns of its own
    // calls' changes from the calls themselves.
    // A step started inside another one (an operation called during a drag) is part of it.
    let recording = false;
    function startRecording(byUser) {
        if (recording)
            return () => {};
        recording = true;
        observer.takeRecords();
        delivered.length = 0;
        observer.observe(document.documentElement, OBSERVE);
        return () => {
            const records = delivered.splice(0).concat(observer.takeRecords());
            observer.disconnect();
            recording = false;
            if (!records.length)
                return;
            undoSteps.push({ native: false, records: records.map(snapshotRecord) });
            redoSteps.length = 0;
            lastTyping = null;
            if (byUser)
                V.notify('contentChanged');
            V.scheduleDisplayChanged();
        };
    }

    // Runs fn as one undoable adapter step.
    function recorded(fn, byUser) {
        const finish = startRecording(byUser);
        try {
            return fn();
        } finally {
            finish();
        }
    }

    // For an operation that knows what it changes: files its own records (character data:
    // target, oldValue, newValue) in the step and runs write unobserved, sparing the
    // observer a record for each of many small edits.
    function recordWrites(records, write) {
        if (!recording)
            return write();
        delivered.push(...observer.takeRecords());
        for (const rec of records)
            delivered.push(Object.assign(rec, { filed: true }));
        observer.disconnect();
        try {
            return write();
        } finally {
            observer.observe(document.documentElement, OBSERVE);
        }
    }

    function snapshotRecord(m) {
        if (m.filed)
            return m;
        const rec = { type: m.type, target: m.target };
        if (m.type === 'attributes') {
            rec.name = m.attributeName;
            rec.oldValue = m.oldValue;
            rec.newValue = m.target.getAttribute(m.attributeName);
        } else if (m.type === 'characterData') {
            rec.oldValue = m.oldValue;
            rec.newValue = m.target.data;
        } else {
            rec.added = Array.from(m.addedNodes);
            rec.removed = Array.from(m.removedNodes);
            rec.previous = m.previousSibling;
            rec.next = m.nextSibling;
        }
        return rec;
    }

    function setAttr(el, name, value) {
        if (value === null)
            el.removeAttribute(name);
        else
            el.setAttribute(name, value);
    }

    // Later records were made against the document the earlier ones left, so attribute
    // values in between are fixed up by replaying each record in order (or in reverse).
    function revert(records) {
        for (let i = records.length - 1; i >= 0; --i) {
            const m = records[i];
            if (m.type === 'attributes') {
                setAttr(m.target, m.name, m.oldValue);
            } else if (m.type === 'characterData') {
                m.target.data = m.oldValue;
            } else {
                for (const n of m.added)
                    n.remove();
                const before = m.next && m.next.parentNode === m.target ? m.next : null;
                for (const n of m.removed)
                    m.target.insertBefore(n, before);
            }
        }
    }

    function reapply(records) {
        for (let i = 0; i < records.length; ++i) {
            const m = records[i];
            if (m.type === 'attributes') {
                const later = records.slice(i + 1).find(
                    x => x.type === 'attributes' && x.target === m.target && x.name === m.name);
                setAttr(m.target, m.name, later ? later.oldValue : m.newValue);
            } else if (m.type === 'characterData') {
                const later = records.slice(i + 1).find(
                    x => x.type === 'characterData' && x.target === m.target);
                m.target.data = later ? later.oldValue : m.newValue;
            } else {
                for (const n of m.removed)
                    n.remove();
                const before = m.next && m.next.parentNode === m.target ? m.next : null;
                for (const n of m.added)
                    m.target.insertBefore(n, before);
            }
        }
    }

    // After an adapter step is undone or redone, the caret goes where it changed things.
    function placeCaretIn(records) {
        for (const m of records) {
            const node = m.target;
            if (node && node.isConnected && inBody(node)) {
                const r = document.createRange();
                r.setStart(node, 0);
                r.collapse(true);
                const s = document.getSelection();
                s.removeAllRanges();
                s.addRange(r);
                return;
            }
        }
    }

    function undo() {
        const step = undoSteps.pop();
        if (!step)
            return false;
        replaying = true;
        try {
            if (step.native)
                step.engineSteps = undoNative(step);
            else {
                revert(step.records);
                placeCaretIn(step.records);
            }
        } finally {
            replaying = false;
        }
        redoSteps.push(step);
        lastTyping = null;
        V.notify('contentChanged');
        V.scheduleDisplayChanged();
        return true;
    }

    function redo() {
        const step = redoSteps.pop();
        if (!step)
            return false;
        replaying = true;
        try {
            if (step.native) {
                for (let i = 0; i < (step.engineSteps || 1); ++i)
                    document.execCommand('redo');
            }
            else {
                reapply(step.records);
                placeCaretIn(step.records);
            }
        } finally {
            replaying = false;
        }
        undoSteps.push(step);
        lastTyping = null;
        V.notify('contentChanged');
        V.scheduleDisplayChanged();
        return true;
    }

    // A native command that changed the document is one native step; input events come
    // for it too, and onInput takes care of the bookkeeping.
    function native(name, value) {
        return () => {
            if (!editing())
                throw new Error('The document is not in edit state');
            return document.execCommand(name, false, value === undefined ? null : value);
        };
    }

    // ---- inline formats of the adapter's own -------------------------------------------

    // The engine's inline formatting lays a long page out several times over, which is
    // most of a bold's time there. The common cases, a run inside one text node that lacks
    // the format and the run a bare element of the format holds alone, are wrapped and
    // unwrapped here as the engine would, as one undo step announced like the engine's
    // edit. Everything else (runs that may merge with a neighbouring element, formats set
    // by style, selections across nodes) stays the engine's.
    const INLINE_FORMATS = {
        bold: { tag: 'b', property: 'fontWeight' },
        italic: { tag: 'i', property: 'fontStyle' },
        underline: { tag: 'u', property: 'textDecoration' },
    };

    const INLINE_COMMANDS = new Set(Object.keys(INLINE_FORMATS));

    // The text node that holds the whole selection, if it is worth formatting.
    function selectedRun(r) {
        const t = r.startContainer;
        if (t.nodeType !== 3 || t !== r.endContainer || r.collapsed
            || !t.data.slice(r.startOffset, r.endOffset).trim() || !inBody(t)
            || !t.parentElement.isContentEditable || document.queryCommandState('styleWithCSS'))
            return null;
        return t;
    }

    // An ancestor that sets the property itself is split or rewritten by the engine.
    function setInline(el, property) {
        for (let n = el; n && n !== document.body; n = n.parentElement) {
            if (n.style && n.style[property])
                return true;
        }
        return false;
    }

    // The format's element the selection fills, when removing the format unwraps it.
    function wrapperToRemove(r, t, format, test) {
        const el = t.parentElement;
        if (r.startOffset !== 0 || r.endOffset !== t.length || el.localName !== format.tag
            || el.attributes.length || el.childNodes.length !== 1
            || setInline(el.parentElement, format.property) || test(el.parentElement))
            return null;
        return el;
    }

    function wrappable(r, t, format, test) {
        // The engine merges a run that touches an element with it when it can.
        const before = r.startOffset === 0 ? t.previousSibling : null;
        const after = r.endOffset === t.length ? t.nextSibling : null;
        if ((before && before.nodeType !== 3) || (after && after.nodeType !== 3))
            return false;
        return !setInline(t.parentElement, format.property) && !test(t.parentElement);
    }

    // True when the selection is formatted, false to leave it to the engine. Like the
    // engine's, the element goes in whatever the page's style sheet makes of it.
    function inlineFormat(format, test) {
        const s = document.getSelection();
        const r = selectionRange();
        const t = !recording && r ? selectedRun(r) : null;
        const wrapper = t && wrapperToRemove(r, t, format, test);
        if (!t || (!wrapper && !wrappable(r, t, format, test)))
            return false;
        const backwards = s.anchorNode === s.focusNode && s.anchorOffset > s.focusOffset;
        const start = r.startOffset, end = r.endOffset;
        let text = t;
        // Ahead of the display change the edit announces, which reads the selection.
        V.soon(applyPendingSelection);
        recorded(() => {
            if (wrapper) {
                wrapper.replaceWith(text);
                return;
            }
            if (start > 0)
                text = text.splitText(start);
            if (end - start < text.length)
                text.splitText(end - start);
            const el = document.createElement(format.tag);
            text.parentNode.insertBefore(el, text);
            el.appendChild(text);
        }, true);
        const range = document.createRange();
        range.selectNodeContents(text);
        pendingSelection = { range: range, backwards: backwards };
        return true;
    }

    // ---- enter in an element with an id ---------------------------------------------------

    // Splitting a block copies its attributes to the new one; an id must stay unique.
    function dropCopiedIds(e) {
        if (e.inputType !== 'insertParagraph' && e.inputType !== 'insertLineBreak')
            return;
        for (let n = caretElement(); n && n !== document.body; n = n.parentElement) {
            const id = n.getAttribute('id');
            if (id && document.querySelectorAll('[id="' + CSS.escape(id) + '"]').length > 1)
                n.removeAttribute('id');
        }
    }

    // ---- the command table ----------------------------------------------------------------

    const commands = new Map();

    // A command: exec(option, argument) returns its result (or throws), status() its state.
    function defineCommand(id, name, exec, status) {
        commands.set(id, { name: name, exec: exec, status: status });
    }

    function nativeStatus(name) {
        return () => {
            if (!editing())
                return DISABLED;
            const r = selectionRange();
            if (!r || !inBody(r.startContainer))
                return DISABLED;
            if (!engineAnswer('enabled', name))
                return DISABLED;
            return engineState(name) ? LATCHED : ENABLED;
        };
    }

    function formatCommand(id, name, nativeName, test) {
        const format = INLINE_FORMATS[nativeName];
        const engine = native(nativeName);
        const exec = format ? () => inlineFormat(format, test) || engine() : engine;
        defineCommand(id, name, exec,
                      test ? () => textState(test, nativeName) : nativeStatus(nativeName));
    }

    const needsSelection = () => {
        const s = nativeStatus('selectAll')();
        return s === LATCHED ? ENABLED : s;
    };

    const hasText = () => {
        if (!editing())
            return DISABLED;
        const r = selectionRange();
        return r && !r.collapsed && inBody(r.startContainer) ? ENABLED : DISABLED;
    };

    formatCommand(5000, 'bold', 'bold', isBold);
    formatCommand(5023, 'italic', 'italic', isItalic);
    formatCommand(5048, 'underline', 'underline', isUnderlined);
    formatCommand(5024, 'justifyCenter', 'justifyCenter');
    formatCommand(5025, 'justifyLeft', 'justifyLeft');
    formatCommand(5026, 'justifyRight', 'justifyRight');
    formatCommand(5030, 'orderedList', 'insertOrderedList');
    formatCommand(5051, 'unorderedList', 'insertUnorderedList');
    defineCommand(5018, 'indent', native('indent'), needsSelection);
    defineCommand(5031, 'outdent', native('outdent'), needsSelection);
    defineCommand(5034, 'removeFormat', native('removeFormat'), hasText);
    defineCommand(5046, 'setForeColor', (o, colour) => native('foreColor', String(colour))(),
                  needsSelection);
    defineCommand(5042, 'setBackColor', (o, colour) => native('hiliteColor', String(colour))(),
                  needsSelection);
    defineCommand(5044, 'setFontName', (o, face) => native('fontName', String(face))(),
                  needsSelection);
    defineCommand(5045, 'setFontSize', (o, size) => native('fontSize', String(size))(),
                  needsSelection);
    defineCommand(5043, 'setBlockFormat', (o, name) => setBlockFormat(name), needsSelection);
    defineCommand(5013, 'getFontName', () => {
        const v = commonValue(firstFamily);
        return v === undefined || v === null ? '' : v;
    }, () => {
        const v = commonValue(firstFamily);
        return v === undefined ? DISABLED : v === null ? NINCHED : ENABLED;
    });
    defineCommand(5014, 'getFontSize', () => {
        const v = commonValue(htmlFontSize);
        return v === undefined || v === null ? 0 : v;
    }, () => {
        const v = commonValue(htmlFontSize);
        return v === undefined ? DISABLED : v === null ? NINCHED : ENABLED;
    });
    defineCommand(5015, 'getForeColor', () => {
        const v = commonValue(computedColor);
        return v || '';
    }, needsSelection);
    defineCommand(5010, 'getBackColor', () => engineAnswer('value', 'hiliteColor'),
                  needsSelection);
    defineCommand(5011, 'getBlockFormat', () => {
        const v = commonValue(blockFormatOf);
        return v || '';
    }, needsSelection);
    defineCommand(5012, 'getBlockFormatNames', () => {
        const names = [];
        for (const f of BLOCK_FORMATS) {
            if (!names.includes(f[0]))
                names.push(f[0]);
        }
        return names;
    }, () => ENABLED);
    defineCommand(5016, 'hyperlink', (o, url) => {
        if (url === undefined || url === null || url === '')
            throw new Error('A link needs an address');
        return native('createLink', String(url))();
    }, needsSelection);
    defineCommand(5050, 'unlink', native('unlink'), () => {
        const el = caretElement();
        return el && el.closest('a[href]') ? ENABLED : DISABLED;
    });
    defineCommand(5017, 'image', (o, src) => native('insertImage', String(src))(),
                  needsSelection);
    defineCommand(5002, 'copy', native('copy'), hasText);
    defineCommand(5003, 'cut', native('cut'), hasText);
    defineCommand(5032, 'paste', native('paste'), needsSelection);
    defineCommand(5004, 'delete', () => {
        if (selectedElement())
            return recorded(() => { selectedElement().remove(); return true; });
        return native('delete')();
    }, hasText);
    defineCommand(5035, 'selectAll', native('selectAll'), () => (document.body ? ENABLED
                                                                                 : DISABLED));
    defineCommand(5049, 'undo', () => undo(), () => (undoSteps.length ? ENABLED : DISABLED));
    defineCommand(5033, 'redo', () => redo(), () => (redoSteps.length ? ENABLED : DISABLED));

    // ---- operations -----------------------------------------------------------------------

    function commandExec(id, option, argument) {
        const command = commands.get(id);
        if (!command)
            throw new Error('Command ' + id + ' is not supported');
        if (command.status) {
            const state = command.status();
            if (state === DISABLED || state === NOT_SUPPORTED)
                throw new Error('Command ' + id + ' is not available here');
        }
        const value = command.exec(option, argument);
        if (value === false)
            throw new Error('Command ' + id + ' did not apply');
        // Reading a value changes nothing; announcing it would make every toolbar refresh,
        // which reads the font, ask for the next one.
        if (!command.name.startsWith('get'))
            V.scheduleDisplayChanged();
        return value === undefined || value === true ? null : value;
    }

    // With values, the reading commands that have something to read are read in the same
    // call: the toolbar refresh then needs one round trip for the states and the font.
    function commandStatus(ids, withValues) {
        const states = [];
        const values = {};
        readings = new Map();
        try {
            collectStatus(ids, withValues, states, values);
        } finally {
            readings = null;
        }
        return { states: states, values: values };
    }

    function collectStatus(ids, withValues, states, values) {
        for (const id of ids) {
            const command = commands.get(id);
            let state = NOT_SUPPORTED;
            if (command) {
                try {
                    state = command.status ? command.status() : ENABLED;
                    if (withValues && command.name.startsWith('get')
                        && (state === ENABLED || state === LATCHED))
                        values[id] = command.exec(OPTION_DONT_PROMPT);
                } catch (e) {
                    state = DISABLED;
                    delete values[id];
                }
            }
            states.push(state);
        }
    }

    // Delete on an element selected whole is the control selection's own DOM edit: it is
    // recorded from before the first listener (window, capturing) to after the last one
    // (document, bubbling).
    let keyStep = null;
    function finishKeyStep() {
        if (keyStep)
            keyStep();
        keyStep = null;
    }

    // The engine offers its undo keys only while its own stack has a step, but the
    // adapter's steps are in the same history: the keys walk that history themselves.
    function historyKey(e) {
        if (!editing() || !e.ctrlKey || e.altKey || e.metaKey)
            return;
        const key = e.key.toLowerCase();
        const redoKey = key === 'y' || (key === 'z' && e.shiftKey);
        if (key !== 'z' && !redoKey)
            return;
        e.preventDefault();
        if (redoKey)
            redo();
        else
            undo();
    }

    const windowListeners = {
        keydown: e => {
            applyPendingSelection();
            finishKeyStep();
            if ((e.key === 'Delete' || e.key === 'Backspace') && selectedElement())
                keyStep = startRecording(true);
            historyKey(e);
        },
        mousedown: applyPendingSelection,
    };

    const listeners = {
        beforeinput: e => { applyPendingSelection(); rememberCaret(e); onBeforeInput(e); },
        input: e => { onInput(e); dropCopiedIds(e); },
    };
    const bubblingListeners = {
        keydown: finishKeyStep,
        keyup: finishKeyStep,
    };

    // Loading a document drops every listener, so they go on again at once.
    function attachListeners() {
        for (const [type, fn] of Object.entries(listeners))
            document.addEventListener(type, fn, true);
        for (const [type, fn] of Object.entries(bubblingListeners))
            document.addEventListener(type, fn, false);
        for (const [type, fn] of Object.entries(windowListeners))
            window.addEventListener(type, fn, true);
    }

    // A new document starts a history of its own with the first operation on it.
    let seenGeneration = null;
    function followDocument() {
        if (V.generation() === seenGeneration)
            return;
        seenGeneration = V.generation();
        pendingSelection = null;
        undoSteps.length = 0;
        redoSteps.length = 0;
        lastTyping = null;
        recording = false;
        observer.disconnect();
        keyStep = null;
    }

    // Operations of the other adapter files that change the document become undo steps.
    V.recordChangesWith(recorded);
    V.onNewDocument(attachListeners);
    V.beforeOperations(followDocument);
    V.beforeOperations(applyPendingSelection);
    attachListeners();
    followDocument();

    V.defineCommand = defineCommand;
    V.recorded = recorded;
    V.startRecording = startRecording;
    V.recordWrites = recordWrites;
    V.selectionRange = selectionRange;
    V.selectedElement = selectedElement;
    V.caretElement = caretElement;
    V.editing = editing;
    V.inBody = inBody;

    // ---- the state that travels with notifications ------------------------------------

    // The commands whose states (and values) the host shows; every display change and
    // every command it runs bring them back, so that following the selection takes no
    // question of its own.
    let reportedIds = [];

    function reportedStatus() {
        return reportedIds.length ? commandStatus(reportedIds, true) : null;
    }

    const MAKE_ABSOLUTE = 5028;

    // The element a menu is about (the one chosen whole, else the one the selection stands
    // in) as the tag names of its path to the root, and whether it can be positioned.
    function menuTarget() {
        const selection = V.selection;
        const el = selection.currentControl() || selection.parentOf(selection.selectionTextRange());
        const path = [];
        for (let n = el; n && n.nodeType === 1; n = n.parentElement)
            path.push(n.tagName);
        const positioning = commands.get(MAKE_ABSOLUTE);
        let position = NOT_SUPPORTED;
        try {
            position = positioning && positioning.status ? positioning.status() : NOT_SUPPORTED;
        } catch (e) {
            position = DISABLED;
        }
        return { path: path, position: position };
    }

    V.reportDisplayWith(reportedStatus);
    // Commands that may change much of a long document (a table's structure): reading the
    // states would lay the whole change out before the answer goes. Their answer leaves the
    // states out; the display change each command announces brings them, read once.
    const bulkCommands = new Set();
    V.bulkCommands = ids => { for (const id of ids) bulkCommands.add(id); };
    V.onContextMenu(menuTarget);

    // withStatus: the answer brings the reported states along, except after a reading
    // command, which changes nothing.
    V.register('commandExec', (id, option, argument, withStatus) => {
        const command = commands.get(id);
        // The engine is asked before an inline format, while the page is laid out.
        const inline = withStatus && command && INLINE_COMMANDS.has(command.name)
                       && reportedIds.length;
        if (inline) {
            engineAnswers = new Map();
            reportedStatus();
        }
        try {
            const value = commandExec(id, option, argument);
            if (!withStatus)
                return value;
            if (!pendingSelection)
                engineAnswers = null;
            const reading = command.name.startsWith('get');
            if (reading || bulkCommands.has(id))
                return { value: value, status: null };
            return { value: value, status: reportedStatus() };
        } finally {
            engineAnswers = null;
        }
    });
    V.reads('commandStatus');
    // Asked with follow, the commands are the ones reported from then on.
    V.register('commandStatus', (ids, withValues, follow) => {
        if (follow)
            reportedIds = ids || [];
        return commandStatus(ids || [], !!withValues);
    });
    // For inspection by tests.
    V.commandIds = () => Array.from(commands.keys());
    V.undoDepth = () => [undoSteps.length, redoSteps.length];
})();

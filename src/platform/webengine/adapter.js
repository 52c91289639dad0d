// The editing adapter. It runs in an isolated world of the page, so scripts of the edited
// document (which never run anyway: the main world has JavaScript switched off) cannot see
// it. C++ calls it through __vantry.invoke(); it reports back through the web channel.
(function () {
    'use strict';

    if (window.__vantry)
        return;

    const EDITOR_BASE_ATTR = 'data-vantry-editor-base';
    // Elements the editor adds after the body to draw editing aids; never saved.
    const EDITOR_LAYER_ATTR = 'data-vantry-editor-layer';

    let host = null;              // the C++ notifier, once the channel is up
    const pending = [];           // notifications raised before the channel was up
    let generation = 0;           // increases with every loaded document
    const handles = new Map();    // handle id -> node, for the current generation
    const handleOf = new WeakMap();
    let nextHandle = 1;
    let editable = true;
    let baseUrl = '';
    let documentAddress = '';     // where the document came from; resolves, never saved
    let displayTimer = 0;
    let mouseMoveQueued = null;
    let editorSheet = null;
    // The host numbers its calls; a notification says which call it came after, so that
    // the host can tell whether what it carries is still current.
    let lastSerial = 0;
    let displayState = () => null;
    const menuParts = [];

    function notify(kind, args) {
        if (host)
            host.notify(kind, args || []);
        else
            pending.push([kind, args || []]);
    }

    // ---- handles -------------------------------------------------------------------

    function handleFor(node) {
        if (!node)
            return null;
        let id = handleOf.get(node);
        // An id from before the last reset may since name another node, or none.
        if (!id || handles.get(id) !== node) {
            id = nextHandle++;
            handleOf.set(node, id);
            handles.set(id, node);
        }
        return { id: id, generation: generation };
    }

    function nodeFor(h) {
        if (!h || h.generation !== generation)
            throw new Error('The element belongs to a document that is no longer loaded');
        const node = handles.get(h.id);
        if (!node)
            throw new Error('Unknown element handle ' + h.id);
        return node;
    }

    function resetHandles() {
        handles.clear();
        nextHandle = 1;
        generation++;
    }

    // ---- editor-only styling --------------------------------------------------------

    // Rules that help editing but must never reach the saved markup live in a
    // constructed style sheet, which is not part of the DOM.
    function editorRules() {
        const rules = [];
        // In long documents, let the engine skip style, layout and paint of blocks far from
        // the viewport: most of what this saves on a key press is the engine's copy of the
        // whole editable text for input methods, which leaves skipped blocks out. The rule
        // is settled before a document is written and kept until the next one, because
        // blocks laid out before they get it edit more slowly than with no rule at all. The
        // division that wraps the whole body is left alone: containing it would clip
        // everything wider than the page.
        if (skipFarBlocks)
            rules.push(':where(body > :not(:only-child), body > :only-child > *) { ' +
                       'content-visibility: auto; contain-intrinsic-size: auto 1.2em; }');
        if (!scrollBarsVisible)
            rules.push('html, body { overflow: hidden !important; }');
        // New rows and cells are empty; without this they are a few pixels high and hard
        // to click into.
        rules.push(':is(td, th):empty, :is(td, th) > div:only-child:empty { ' +
                   'height: 1.2em; min-width: 1em; }');
        if (display.borders) {
            // Tables without a visible border are drawn dashed, so their cells can be seen.
            const zero = ':is(table:not([border]), table[border="0"])';
            rules.push(zero + ', ' + zero + ' > :is(tbody, thead, tfoot) > tr > :is(td, th), ' +
                       zero + ' > tr > :is(td, th) { outline: 1px dashed #a0a0a0; ' +
                       'outline-offset: -1px; }');
        }
        if (display.details) {
            // Marks for what a reader never sees: anchors and scripts here; comments and
            // line breaks have no box to style and are marked by marks.js.
            const mark = 'font: 9px sans-serif; color: #555; background: #ffd; ' +
                         'border: 1px solid #bb9; padding: 0 2px; margin: 0 1px; ' +
                         '-webkit-user-modify: read-only; user-select: none;';
            rules.push('a[name]:not([href])::before, a[id]:not([href])::before { content: ' +
                       '"\\2693"; ' + mark + ' }');
            rules.push('body script { display: inline-block !important; width: auto; ' +
                       'height: 12px; overflow: hidden; font-size: 0 !important; ' +
                       'vertical-align: middle; }');
            rules.push('body script::before { content: "script"; display: inline-block; ' +
                       mark + ' }');
            rules.push('body noscript, body style { display: none; }');
        }
        // The editing aids are drawn on screen only: a printed page shows the page.
        return '@media screen {\n' + rules.join('\n') + '\n}';
    }

    let scrollBarsVisible = true;
    let skipFarBlocks = false;
    let documentSize = 0;   // characters of markup last loaded

    // Below this many blocks a key press is fast anyway and the page renders exactly as
    // written; above it, skipping far blocks pays.
    const SKIP_FAR_BLOCKS_FROM = 500;
    const BLOCK_TAG = /<(?:p|h[1-6]|li|div|tr|table|pre|blockquote|ul|ol|dl|dt|dd)[\s>]/gi;

    function countsAsLong(text) {
        BLOCK_TAG.lastIndex = 0;
        let blocks = 0;
        while (BLOCK_TAG.exec(text) !== null) {
            if (++blocks >= SKIP_FAR_BLOCKS_FROM)
                return true;
        }
        return false;
    }
    // The display switches: editing aids drawn through the editor's sheet, never saved.
    const display = { borders: false, details: false, snapToGrid: false };

    function applyEditorSheet() {
        try {
            if (!editorSheet)
                editorSheet = new CSSStyleSheet();
            editorSheet.replaceSync(editorRules());
            const sheets = document.adoptedStyleSheets.filter(s => s !== editorSheet);
            sheets.push(editorSheet);
            document.adoptedStyleSheets = sheets;
        } catch (e) {
            // Engines without constructed style sheets simply edit without the rules.
        }
    }

    // ---- editor BASE element ----------------------------------------------------------

    function editorBase(doc) {
        const head = (doc || document).head;
        return head ? head.querySelector('base[' + EDITOR_BASE_ATTR + ']') : null;
    }

    function applyBase(doc) {
        doc = doc || document;
        let base = editorBase(doc);
        // The host's BASE first; a document's own BASE outranks the address it came from.
        const ownBase = doc.head
            && doc.head.querySelector('base[href]:not([' + EDITOR_BASE_ATTR + '])');
        const href = baseUrl || (ownBase ? '' : documentAddress);
        if (!href) {
            if (base)
                base.remove();
            return;
        }
        if (!doc.head)
            return;
        if (!base) {
            base = doc.createElement('base');
            base.setAttribute(EDITOR_BASE_ATTR, '');
            doc.head.insertBefore(base, doc.head.firstChild);
        }
        if (base.getAttribute('href') !== href)
            base.setAttribute('href', href);
    }

    // ---- resource hints ---------------------------------------------------------------

    // A link with one of these tokens fetches as soon as it is in the page, and the request
    // looks like one for a real image, sheet or font, so no filter on the network side can
    // tell it apart. Such links are kept in the page with the tokens hidden in an inert
    // one (the whole value, encoded, behind a marker no document can carry), and every read
    // path puts the value back. The other tokens stay, so a sheet that is also a hint still
    // draws.
    const HINT_TOKENS = new Set(['preload', 'prefetch', 'modulepreload', 'dns-prefetch',
                                 'preconnect', 'prerender', 'compression-dictionary']);
    const INERT_REL = 'vantry-inert-' + Math.random().toString(36).slice(2) + '-';
    const INERT_REL_VALUE = new RegExp(' rel="' + INERT_REL + '([^"\\s]*)[^"]*"', 'g');
    const LINK_START = /<link[\s>\/]/i;

    function isLink(node) {
        return node.nodeType === Node.ELEMENT_NODE && node.localName === 'link'
               && node.namespaceURI === 'http://www.w3.org/1999/xhtml';
    }

    // The rel value to keep in the page for the one written.
    function inertRel(value) {
        if (value.startsWith(INERT_REL))
            return value;
        const tokens = value.split(/[\t\n\f\r ]+/).filter(t => t);
        if (!tokens.some(t => HINT_TOKENS.has(t.toLowerCase())))
            return value;
        const kept = tokens.filter(t => !HINT_TOKENS.has(t.toLowerCase()));
        return [INERT_REL + encodeURIComponent(value)].concat(kept).join(' ');
    }

    function writtenRel(value) {
        const hidden = /^\S*/.exec(value)[0];
        return hidden.startsWith(INERT_REL)
                   ? decodeURIComponent(hidden.slice(INERT_REL.length)) : value;
    }

    // Hides the hints of the links in root, which must not be in the page yet; true when
    // there were any.
    function inertHints(root) {
        let hidden = false;
        for (const link of root.querySelectorAll('link[rel]')) {
            if (!isLink(link))
                continue;
            const rel = link.getAttribute('rel');
            const inert = inertRel(rel);
            if (inert !== rel) {
                link.setAttribute('rel', inert);
                hidden = true;
            }
        }
        return hidden;
    }

    // Markup to parse into the page under context: as given unless it has hints, then
    // parsed apart the way the page would, with the hints hidden.
    function inertMarkup(html, context) {
        html = String(html);
        if (!LINK_START.test(html))
            return html;
        // Whether the page is in quirks mode changes how the markup parses.
        const doc = new DOMParser().parseFromString(
            document.compatMode === 'BackCompat' ? '' : '<!DOCTYPE html>', 'text/html');
        const holder = doc.createElementNS(context && context.namespaceURI
                                               || 'http://www.w3.org/1999/xhtml',
                                           context ? context.localName : 'body');
        holder.innerHTML = html;
        return inertHints(holder) ? holder.innerHTML : html;
    }

    // An attribute value as the serialiser writes it.
    const probe = document.implementation.createHTMLDocument('').createElement('span');
    function serialisedValue(value) {
        probe.setAttribute('title', value);
        const tag = probe.outerHTML;
        return tag.slice('<span title="'.length, tag.length - '"></span>'.length);
    }

    // Markup read from the page with the hints as they were written.
    function withHints(html) {
        if (!html.includes(INERT_REL))
            return html;
        return html.replace(INERT_REL_VALUE, (match, hidden) =>
            ' rel="' + serialisedValue(decodeURIComponent(hidden)) + '"');
    }

    // ---- loading ----------------------------------------------------------------------

    // The default-font division the editor puts around every text it loads.
    const EDITOR_WRAPPER = /^<div style="FONT-FAMILY:[^"<>]*;COLOR:[^"<>]*;FONT-SIZE:[^"<>]*">/;
    const EDITOR_WRAPPER_END = '</div>';
    // What may stand in front of a document's root: space, comments (conditional ones
    // included), the doctype, processing instructions such as an XML declaration, BASE.
    const PROLOGUE_ITEM = /\s+|<!--(?:-?>|[\s\S]*?-->)|<!(?!--)[^>]*>|<\?[^>]*>|<base\b[^>]*>/iy;
    const DOCUMENT_START = /<(?:html|head|body)(?=[\s>\/])/iy;

    // The division's start tag when the editor wrapped a whole document in it, else null.
    // A wrapped fragment is parsed as it stands, division and all.
    function wrappedDocumentStart(text) {
        const wrapper = EDITOR_WRAPPER.exec(text);
        if (!wrapper || !text.endsWith(EDITOR_WRAPPER_END))
            return null;
        let at = wrapper[0].length;
        let doctype = false;
        let item;
        PROLOGUE_ITEM.lastIndex = at;
        while ((item = PROLOGUE_ITEM.exec(text)) !== null) {
            doctype = doctype || /^<!doctype/i.test(item[0]);
            at = PROLOGUE_ITEM.lastIndex;
        }
        DOCUMENT_START.lastIndex = at;
        return doctype || DOCUMENT_START.test(text) ? wrapper[0] : null;
    }

    function escapeRegExp(text) {
        return text.replace(/[.*+?^${}()|[\]\\]/g, '\\$&');
    }

    // The BASE tag the editor puts in front of "<HTML>" for its own address goes: the
    // address is applied as the editor's. Any other BASE belongs to its document.
    function withoutEditorBase(text) {
        if (!baseUrl)
            return text;
        const tag = new RegExp('<base href="' + escapeRegExp(baseUrl) + '">(<html>)', 'gi');
        return text.replace(tag, '$1');
    }

    // Moves the body's content into the editor's division.
    function wrapBody(doc, startTag) {
        const body = doc.body;
        if (!body)
            return;
        const template = doc.createElement('template');
        template.innerHTML = startTag + EDITOR_WRAPPER_END;
        const wrapper = template.content.firstChild;
        while (body.firstChild)
            wrapper.appendChild(body.firstChild);
        body.appendChild(wrapper);
    }

    // Makes a parsed document the page's document. The page's own parser would stop at a
    // style sheet in the body until the sheet arrives, so a document written into it is
    // not whole when the write returns; parsed apart, it is, whatever the network does.
    function install(parsed) {
        // Written rather than adopted, so that the doctype sets the page's rendering mode.
        document.open();
        document.write(parsed.doctype ? doctypeText(parsed.doctype) : '');
        document.close();
        for (const node of Array.from(document.childNodes)) {
            if (node.nodeType !== Node.DOCUMENT_TYPE_NODE)
                document.removeChild(node);
        }
        for (const node of Array.from(parsed.childNodes)) {
            if (node.nodeType !== Node.DOCUMENT_TYPE_NODE)
                document.appendChild(document.adoptNode(node));
        }
    }

    function load(text) {
        skipFarBlocks = countsAsLong(text);
        documentSize = text.length;
        applyEditorSheet();
        const wrapper = wrappedDocumentStart(text);
        if (wrapper !== null)
            text = text.slice(wrapper.length, text.length - EDITOR_WRAPPER_END.length);
        const parsed = new DOMParser().parseFromString(withoutEditorBase(text), 'text/html');
        if (wrapper !== null)
            wrapBody(parsed, wrapper);
        // Before the content reaches the page, so that nothing loads from the wrong place
        // and nothing loads that drawing does not need.
        applyBase(parsed);
        inertHints(parsed);
        install(parsed);
        afterLoad();
        return true;
    }

    // Element handles and the selection do not survive a replaced body.
    function afterContentReplaced() {
        resetHandles();
        const selection = document.getSelection();
        if (selection)
            selection.removeAllRanges();
        runHooks(newDocumentHooks);
    }

    function afterLoad() {
        resetHandles();
        applyBase();
        applyEditorSheet();
        document.designMode = editable ? 'on' : 'off';
        attachListeners();
        const selection = document.getSelection();
        if (selection)
            selection.removeAllRanges();
        window.scrollTo(0, 0);
        runHooks(newDocumentHooks);
    }

    // ---- reading back -----------------------------------------------------------------

    function doctypeText(dt) {
        if (!dt)
            return '';
        let text = '<!DOCTYPE ' + dt.name;
        if (dt.publicId)
            text += ' PUBLIC "' + dt.publicId + '"';
        else if (dt.systemId)
            text += ' SYSTEM';
        if (dt.systemId)
            text += ' "' + dt.systemId + '"';
        return text + '>';
    }

    function documentHTML() {
        const root = document.documentElement;
        if (!root)
            return '';
        let html = root.outerHTML;
        for (const layer of root.querySelectorAll(':scope > [' + EDITOR_LAYER_ATTR + ']')) {
            const tag = layer.outerHTML;
            const at = html.lastIndexOf(tag);
            if (at >= 0)
                html = html.slice(0, at) + html.slice(at + tag.length);
        }
        const base = editorBase();
        let front = '';
        if (base) {
            const tag = base.outerHTML;
            const at = html.indexOf(tag);
            if (at >= 0)
                html = html.slice(0, at) + html.slice(at + tag.length);
            // The editor's BASE stands in front of the HTML start tag, where the text
            // rules on the C++ side expect it and remove it from; that only works for an
            // HTML start tag without attributes.
            if (baseUrl && root.attributes.length === 0)
                front = '<BASE HREF="' + baseUrl.replace(/"/g, '&quot;') + '">';
        }
        let out = '';
        for (const node of document.childNodes) {
            if (node === root)
                out += front + html;
            else if (node.nodeType === Node.DOCUMENT_TYPE_NODE)
                out += doctypeText(node);
            else if (node.nodeType === Node.COMMENT_NODE)
                out += commentText(node.data);
        }
        return withHints(out);
    }

    // The parser keeps an XML declaration as a comment; it goes back out as it came in.
    function commentText(data) {
        return /^\?[^>]*\?$/.test(data) ? '<' + data + '>' : '<!--' + data + '-->';
    }

    // ---- events -----------------------------------------------------------------------

    function shiftState(e) {
        return (e.shiftKey ? 1 : 0) | (e.ctrlKey ? 2 : 0) | (e.altKey ? 4 : 0);
    }

    function buttonOf(e) {
        switch (e.button) {
        case 0: return 1;
        case 1: return 4;
        case 2: return 2;
        default: return 0;
        }
    }

    function buttonsOf(e) {
        return (e.buttons & 1 ? 1 : 0) | (e.buttons & 2 ? 2 : 0) | (e.buttons & 4 ? 4 : 0);
    }

    // Timers never fire in this world while the page's own scripting is off, but messages
    // do: this runs queued work as soon as the current task is done.
    const soonQueue = [];
    const soonChannel = new MessageChannel();
    soonChannel.port1.onmessage = () => {
        for (const fn of soonQueue.splice(0))
            fn();
    };

    function soon(fn) {
        soonQueue.push(fn);
        if (soonQueue.length === 1)
            soonChannel.port2.postMessage(0);
    }

    // Selection and content events come in bursts; the host hears one display change per
    // burst.
    //
    // A change the adapter makes itself is always announced; the engine's selection events
    // only when the selection really moved, since operations that look at the selection
    // may set it back to where it was, and the host's refresh runs such operations.
    let displayForced = false;
    let lastSelection = null;

    function selectionMoved() {
        const s = document.getSelection();
        const now = s ? [generation, s.anchorNode, s.anchorOffset, s.focusNode, s.focusOffset]
                      : [generation];
        const moved = !lastSelection || now.length !== lastSelection.length
                      || now.some((v, i) => v !== lastSelection[i]);
        lastSelection = now;
        return moved;
    }

    function scheduleDisplayChanged(force) {
        if (force !== false)
            displayForced = true;
        if (displayTimer)
            return;
        displayTimer = 1;
        soon(() => {
            displayTimer = 0;
            const forced = displayForced;
            displayForced = false;
            if (selectionMoved() || forced)
                notify('displayChanged', [lastSerial, displayState()]);
        });
    }

    function selectionEvent() {
        scheduleDisplayChanged(false);
    }

    const listeners = {
        keydown: e => { notify('keyDown', [e.keyCode, shiftState(e)]); },
        input: () => { notify('contentChanged'); scheduleDisplayChanged(); },
        mousedown: e => {
            notify('mouseDown', [buttonOf(e), shiftState(e), e.clientX, e.clientY]);
        },
        mouseup: e => {
            notify('mouseUp', [buttonOf(e), shiftState(e), e.clientX, e.clientY]);
            scheduleDisplayChanged();
        },
        mousemove: e => {
            // One notification per frame is plenty for a pointer.
            const queued = mouseMoveQueued;
            mouseMoveQueued = [buttonsOf(e), shiftState(e), e.clientX, e.clientY];
            if (!queued) {
                requestAnimationFrame(() => {
                    const args = mouseMoveQueued;
                    mouseMoveQueued = null;
                    if (args)
                        notify('mouseMove', args);
                });
            }
        },
        click: e => {
            // Links never navigate, whatever the engine's editing state.
            if (e.target && e.target.closest && e.target.closest('a[href]'))
                e.preventDefault();
            notify('click');
        },
        dblclick: () => { notify('doubleClick'); },
        contextmenu: e => {
            e.preventDefault();
            // What the menu is about goes with it: the host shows it without asking back.
            notify('contextMenu', [e.clientX, e.clientY, lastSerial, menuContext(e)]);
        },
        submit: e => { e.preventDefault(); },
        selectionchange: selectionEvent,
        keyup: selectionEvent,
    };

    function menuContext(e) {
        const context = {};
        for (const part of menuParts) {
            try {
                Object.assign(context, part(e.clientX, e.clientY));
            } catch (err) {
                // A part that cannot say is left out; the host shows what it knows.
            }
        }
        return context;
    }

    function attachListeners() {
        for (const [type, fn] of Object.entries(listeners))
            document.addEventListener(type, fn, true);
    }

    // ---- operations -------------------------------------------------------------------

    function scrollingElement() {
        return document.scrollingElement || document.body;
    }

    const ops = {
        load: text => load(text),
        documentHTML: () => documentHTML(),
        bodyInnerHTML: () => (document.body ? withHints(document.body.innerHTML) : ''),
        // The text as a reader sees it, from the text model rather than the layout: blocks
        // the engine skips while they are far from view have no rendered text.
        bodyInnerText: () => {
            if (!document.body)
                return '';
            if (!ops.bodyRange || !ops.rangeText)
                return document.body.textContent;
            return ops.rangeText(ops.bodyRange());
        },
        setBodyInnerHTML: html => {
            if (!document.body)
                throw new Error('The document has no body');
            document.body.innerHTML = inertMarkup(html, document.body);
            afterContentReplaced();
            return true;
        },
        // The same as an edit of the document: undoable, and handles of elements it takes
        // out come back with an undo.
        editBodyInnerHTML: html => {
            if (!document.body)
                throw new Error('The document has no body');
            document.body.innerHTML = inertMarkup(html, document.body);
            return true;
        },
        title: () => document.title,
        setTitle: text => {
            document.title = text;
            return true;
        },
        scrollPosition: () => {
            const el = scrollingElement();
            return el ? [el.scrollLeft, el.scrollTop] : [0, 0];
        },
        setScrollPosition: (left, top) => {
            const el = scrollingElement();
            if (!el)
                return false;
            if (left !== null)
                el.scrollLeft = left;
            if (top !== null)
                el.scrollTop = top;
            return true;
        },
        setEditable: on => {
            editable = !!on;
            document.designMode = editable ? 'on' : 'off';
            return true;
        },
        isEditable: () => editable,
        setScrollBarsVisible: on => {
            scrollBarsVisible = !!on;
            applyEditorSheet();
            return true;
        },
        setBaseUrl: url => {
            baseUrl = url || '';
            applyBase();
            return true;
        },
        // Takes effect with the next document loaded, so that no address is ever resolved
        // against the wrong one.
        setDocumentAddress: url => {
            documentAddress = url || '';
            return true;
        },
        refresh: () => {
            applyEditorSheet();
            void (document.body && document.body.offsetHeight);
            return true;
        },
        execCommand: (command, showUi, value) => document.execCommand(command, !!showUi, value),
        focus: () => {
            window.focus();
            if (document.body)
                document.body.focus();
            return true;
        },
        elementText: (tag, index) => {
            const list = document.getElementsByTagName(tag);
            return index < list.length ? list[index].textContent : null;
        },
        placeCaret: (tag, index, offset) => {
            const list = document.getElementsByTagName(tag);
            if (!list.length)
                return false;
            const block = list[Math.min(index, list.length - 1)];
            let node = block;
            while (node && node.firstChild)
                node = node.firstChild;
            const range = document.createRange();
            if (node && node.nodeType === Node.TEXT_NODE)
                range.setStart(node, Math.min(offset, node.length));
            else
                range.setStart(block, 0);
            range.collapse(true);
            const selection = document.getSelection();
            selection.removeAllRanges();
            selection.addRange(range);
            block.scrollIntoView({ block: 'center' });
            return true;
        },
        // A ticket for the next rendering update: frameRendered(ticket) turns true once the
        // engine has run the frame after the ticket was taken (style, layout and paint
        // included), so callers can wait for what the user would see. Animation frame
        // callbacks run before that work and a message posted from one is handled after it;
        // timers would do too, but they never fire in this world while the page's own
        // scripts are off.
        ...(() => {
            let taken = 0, rendered = 0;
            return {
                frameTicket: () => {
                    const ticket = ++taken;
                    requestAnimationFrame(() => {
                        const channel = new MessageChannel();
                        channel.port1.onmessage = () => {
                            rendered = Math.max(rendered, ticket);
                            channel.port1.close();
                        };
                        channel.port2.postMessage(null);
                    });
                    return ticket;
                },
                frameRendered: ticket => rendered >= ticket,
            };
        })(),
        // The surface's settings made before the adapter was up, in one call.
        configure: settings => {
            if ('editable' in settings)
                ops.setEditable(settings.editable);
            if ('scrollBarsVisible' in settings)
                ops.setScrollBarsVisible(settings.scrollBarsVisible);
            if ('baseUrl' in settings)
                ops.setBaseUrl(settings.baseUrl);
            for (const [name, on] of Object.entries(settings.display || {}))
                ops.setDisplay(name, on);
            return true;
        },
        setDisplay: (name, on) => {
            if (!(name in display))
                throw new Error('Unknown display switch ' + name);
            display[name] = !!on;
            applyEditorSheet();
            runHooks(displayHooks);
            return true;
        },
        display: name => {
            if (!(name in display))
                throw new Error('Unknown display switch ' + name);
            return display[name];
        },
    };

    // Operations that change the document; each runs as one step of the undo history.
    const changing = new Set(['editBodyInnerHTML']);
    // Operations that may change much of the document in one call: what follows edits
    // (observers, layers) rests while one runs and catches up once after it.
    const bulk = new Set(['setBodyInnerHTML', 'editBodyInnerHTML']);
    let recordChange = fn => fn();
    // Operations that only read, wait for frames or draw the editor's own layers: they may
    // run while the user types without ending what the typing set up.
    const reading = new Set(['documentHTML', 'bodyInnerHTML', 'bodyInnerText', 'title',
                             'scrollPosition', 'isEditable', 'elementText', 'frameTicket',
                             'frameRendered']);

    // What the other adapter files do at these moments, in the order they were added: a
    // new document (loaded, or its body replaced: handles and listeners are gone), a
    // display switch set, and the start and end of every operation (given its name).
    const newDocumentHooks = [];
    const displayHooks = [];
    const operationHooks = [];
    const afterOperationHooks = [];

    function runHooks(hooks, name) {
        for (const hook of hooks)
            hook(name);
    }

    function invoke(name, args, serial) {
        if (serial)
            lastSerial = serial;
        let answer;
        try {
            const fn = ops[name];
            if (!fn)
                throw new Error('Unknown operation ' + name);
            runHooks(operationHooks, name);
            const run = () => fn.apply(null, args || []);
            const result = changing.has(name) ? recordChange(run) : run();
            answer = { r: result === undefined ? null : result };
        } catch (e) {
            answer = { e: String(e && e.message ? e.message : e) };
        }
        runHooks(afterOperationHooks, name);
        return answer;
    }

    // Further adapter files loaded into this world add their operations here, saying
    // whether each changes the document. They get the shared helpers they need for
    // handles and notifications.
    function register(name, fn, changesDocument, isBulk) {
        if (ops[name])
            throw new Error('Operation ' + name + ' exists already');
        ops[name] = fn;
        if (changesDocument)
            changing.add(name);
        if (isBulk)
            bulk.add(name);
    }

    window.__vantry = {
        invoke: invoke,
        register: register,
        operationNames: () => Object.keys(ops),
        onNewDocument: fn => { newDocumentHooks.push(fn); },
        onDisplaySet: fn => { displayHooks.push(fn); },
        beforeOperations: fn => { operationHooks.push(fn); },
        afterOperations: fn => { afterOperationHooks.push(fn); },
        isBulk: name => bulk.has(name),
        reads: (...names) => names.forEach(name => reading.add(name)),
        onlyReads: name => reading.has(name),
        soon: soon,
        recordChangesWith: fn => { recordChange = fn; },
        handleFor: handleFor,
        nodeFor: nodeFor,
        notify: notify,
        generation: () => generation,
        scheduleDisplayChanged: () => scheduleDisplayChanged(true),
        // The state each display change carries, and the parts of a context menu's.
        reportDisplayWith: fn => { displayState = fn; },
        onContextMenu: fn => { menuParts.push(fn); },
        display: display,
        longDocument: () => skipFarBlocks,
        documentSize: () => documentSize,
        // Whether the user may edit: design mode may be off for a while as one block is
        // typed into.
        editable: () => editable && !!document.body,
        EDITOR_LAYER_ATTR: EDITOR_LAYER_ATTR,
        editorBase: () => editorBase(),
        isLink: isLink,
        inertRel: inertRel,
        writtenRel: writtenRel,
        inertHints: inertHints,
        inertMarkup: inertMarkup,
        withHints: withHints,
    };

    function connect() {
        if (typeof QWebChannel === 'undefined' || typeof qt === 'undefined') {
            requestAnimationFrame(connect);
            return;
        }
        new QWebChannel(qt.webChannelTransport, channel => {
            host = channel.objects.host;
            for (const [kind, args] of pending.splice(0))
                host.notify(kind, args);
        });
    }

    function start() {
        // The view's initial empty document is replaced by the editor's own as soon as that
        // commits, and a call answered by this one would lose its answer with it: only the
        // editor's document announces itself.
        if (location.href === 'about:blank')
            return;
        afterLoad();
        connect();
        notify('adapterReady', [generation]);
    }

    if (document.readyState === 'loading')
        document.addEventListener('DOMContentLoaded', start, { once: true });
    else
        start();
})();

// Typing in a long document. A key press makes the engine lay out the parent of the block
// it changed, and the body of a long document has thousands of children: that layout
// alone costs more than a frame. While the user types into one top-level block, a rule of
// this file's own sheet gives that block the size it has and full containment, so the
// engine lays it out on its own. The size is measured again whenever the typing makes the
// block taller, and the rule goes as soon as anything else may change the block: other
// edits, operations, a new document, a resize, fonts or images arriving. The rule lives in
// a constructed sheet, never in the document, and sizes the block exactly as it was.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.typingBlock)
        return;

    const sheet = new CSSStyleSheet();
    let block = null;       // the block laid out on its own
    let index = 0;          // its place among its parent's element children, from 1
    let unsuitable = null;  // a block found unsuitable, until it changes

    function adopt() {
        if (!document.adoptedStyleSheets.includes(sheet))
            document.adoptedStyleSheets = [...document.adoptedStyleSheets, sheet];
    }

    const { blockParent, topBlock, childPlace } = V.topBlocks;

    // Any change but the typing itself may change the block's size, or its place.
    let typing = false;
    const watcher = new MutationObserver(() => {
        if (!typing)
            forget();
    });

    function watch(el) {
        watcher.observe(el, { subtree: true, childList: true, characterData: true,
                              attributes: true });
        watcher.observe(el.parentElement, { childList: true, attributes: true });
        for (const root of [document.documentElement, document.body])
            watcher.observe(root, { attributes: true });
        if (document.head)
            watcher.observe(document.head, { subtree: true, childList: true,
                                             characterData: true, attributes: true });
    }

    function release() {
        if (!block)
            return;
        block = null;
        watcher.disconnect();
        sheet.replaceSync('');
    }

    function forget() {
        release();
        unsuitable = null;
    }

    // Fixing the size is exact only for a block in normal flow whose size does not depend
    // on its contents' widths, whose contents stay inside it, and that holds nothing that
    // may still change size by itself.
    function suitable(el, parent) {
        const style = getComputedStyle(el);
        if (!['block', 'list-item', 'flow-root'].includes(style.display)
            || style.float !== 'none' || !['static', 'relative'].includes(style.position)
            || style.transform !== 'none' || (style.zoom && style.zoom !== '1')
            || getComputedStyle(parent).display !== 'block')
            return false;
        if (el.scrollHeight > el.clientHeight || el.scrollWidth > el.clientWidth)
            return false;
        return !el.querySelector('img, object, embed, iframe, video, audio, svg, canvas, input, '
                                 + 'textarea, select, table');
    }

    function engage(el) {
        const parent = el.parentElement;
        if (el === unsuitable || !suitable(el, parent)) {
            unsuitable = el;
            return;
        }
        const at = childPlace(el);
        const height = el.getBoundingClientRect().height;
        const path = parent === document.body ? 'body > ' : 'body > :only-child > ';
        adopt();
        sheet.replaceSync('@media screen { ' + path + ':nth-child(' + at + ') { '
                          + 'contain: strict !important; box-sizing: border-box !important; '
                          + 'height: ' + height + 'px !important; min-height: 0 !important; '
                          + 'max-height: none !important; } }');
        block = el;
        index = at;
        watch(el);
    }

    let plainTyping = false;

    // A cancelled insertion has no input event; the flags end with the task either way.
    const taskEnd = new MessageChannel();
    taskEnd.port1.onmessage = () => {
        plainTyping = false;
        typing = false;
    };

    function beforeInput(e) {
        const s = document.getSelection();
        plainTyping = e.inputType === 'insertText' && !!s && s.isCollapsed;
        typing = plainTyping && block !== null && topBlock(s.focusNode) === block;
        if (plainTyping)
            taskEnd.port2.postMessage(null);
    }

    function input() {
        // The typing's own records, whether delivered already or not, are no change.
        watcher.takeRecords();
        const typed = plainTyping;
        plainTyping = false;
        typing = false;
        if (!V.longDocument()) {
            forget();
            return;
        }
        const s = document.getSelection();
        const el = typed && s ? topBlock(s.focusNode) : null;
        if (!el) {
            forget();
            return;
        }
        if (el !== block) {
            release();
            engage(el);
            return;
        }
        const parent = el.parentElement;
        if (parent !== blockParent() || parent.children[index - 1] !== el
            || el.scrollHeight > el.clientHeight) {
            // Taller now, or moved: measured again as it is.
            release();
            engage(el);
        }
    }

    function listen() {
        document.addEventListener('beforeinput', beforeInput, true);
        // Bubbling, after the adapter's own listeners.
        document.addEventListener('input', input, false);
        // Images and fonts arriving change sizes anywhere.
        document.addEventListener('load', forget, true);
    }

    V.onNewDocument(() => {
        forget();
        listen();
    });
    V.onDisplaySet(forget);
    // Operations that change the page's width or the editor's rules without a mutation.
    const restyling = new Set(['configure', 'refresh', 'setScrollBarsVisible']);
    V.beforeOperations(name => {
        if (restyling.has(name) || V.isBulk(name))
            forget();
    });
    window.addEventListener('resize', forget);
    if (document.fonts)
        document.fonts.addEventListener('loadingdone', forget);
    listen();

    V.typingBlock = () => (block ? block : null);
})();

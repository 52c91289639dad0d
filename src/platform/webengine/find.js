// The find dialog's search in the design view: the engine's own find, which selects each
// hit and scrolls it into view, with whole words checked here since the engine ignores
// that option.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.findLoaded || !V.textClasses)
        return;
    V.findLoaded = true;

    const { WORD_CLASS, endsWords, wordClass } = V.textClasses;
    // Enough to step over every partial hit of a long document and still end.
    const MAX_HITS = 100000;

    const isWordChar = c => c !== '' && wordClass(c.charCodeAt(0)) === WORD_CLASS;

    function blockOf(node) {
        let n = node.nodeType === Node.ELEMENT_NODE ? node : node.parentElement;
        while (n && !endsWords(n))
            n = n.parentElement;
        return n;
    }

    // The character next to a boundary point, looking across inline markup; '' where a
    // block, a line break or an object comes first.
    function charBeside(container, offset, forward) {
        if (container.nodeType === Node.TEXT_NODE) {
            const data = container.data;
            if (forward ? offset < data.length : offset > 0)
                return data.charAt(forward ? offset : offset - 1);
        }
        const home = blockOf(container);
        const walker = document.createTreeWalker(
            document.body, NodeFilter.SHOW_ELEMENT | NodeFilter.SHOW_TEXT);
        if (container.nodeType === Node.TEXT_NODE) {
            walker.currentNode = container;
        } else {
            const child = container.childNodes[forward ? offset : offset - 1];
            if (!child)
                return '';
            walker.currentNode = child;
            if (child.nodeType === Node.TEXT_NODE && child.data)
                return child.data.charAt(forward ? 0 : child.data.length - 1);
            if (child.nodeType === Node.ELEMENT_NODE && endsWords(child))
                return '';
        }
        for (let n = forward ? walker.nextNode() : walker.previousNode(); n;
             n = forward ? walker.nextNode() : walker.previousNode()) {
            if (n.nodeType === Node.ELEMENT_NODE) {
                if (endsWords(n))
                    return '';
            } else if (n.data) {
                if (blockOf(n) !== home)
                    return '';
                return n.data.charAt(forward ? 0 : n.data.length - 1);
            }
        }
        return '';
    }

    function isWholeWord(r) {
        return !isWordChar(charBeside(r.startContainer, r.startOffset, false))
               && !isWordChar(charBeside(r.endContainer, r.endOffset, true));
    }

    function sameRange(a, b) {
        return a.compareBoundaryPoints(Range.START_TO_START, b) === 0
               && a.compareBoundaryPoints(Range.END_TO_END, b) === 0;
    }

    function findNext(text, matchCase, wholeWord, backwards) {
        text = String(text);
        if (!text || !document.body)
            return false;
        const selection = document.getSelection();
        const before = selection.rangeCount ? selection.getRangeAt(0).cloneRange() : null;
        // The engine searches only blocks it may render.
        if (V.farBlocks)
            V.farBlocks.showAll();
        let first = null;
        for (let i = 0; i < MAX_HITS; ++i) {
            if (!window.find(text, !!matchCase, !!backwards, true, false, false, false))
                break;
            const hit = selection.getRangeAt(0);
            if (first && sameRange(first, hit))
                break;  // round the whole document once
            if (!first)
                first = hit.cloneRange();
            if (V.inBody(hit.startContainer) && (!wholeWord || isWholeWord(hit))) {
                V.scheduleDisplayChanged();
                return true;
            }
        }
        // Nothing found: the selection stays where the user left it.
        selection.removeAllRanges();
        if (before)
            selection.addRange(before);
        return false;
    }

    V.register('findNext', (text, matchCase, wholeWord, backwards) =>
        findNext(text, matchCase, wholeWord, backwards));
})();

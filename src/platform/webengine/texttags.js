// Tag classes and word characters, shared by the adapter files that read the document the
// way a reader sees it: the text ranges, their search, and the find dialog's whole-word
// check. One definition, so that they agree on where blocks and words end.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.textClasses)
        return;

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

    // Where a word ends whatever letters follow: blocks, line breaks, rules and objects.
    function endsWords(el) {
        const kind = elementKind(el);
        return kind === BLOCK || kind === ATOM || kind === LINE_BREAK || kind === RULE;
    }

    // The parent whose children the editor's sheet lets the engine skip on a long page: the
    // body, or the division that wraps the whole body.
    function blockParent() {
        const body = document.body;
        if (!body)
            return null;
        const only = body.firstElementChild;
        return only && only === body.lastElementChild && only.firstElementChild ? only : body;
    }

    // The child of parent that holds node, or null.
    function topBlock(node, parent = blockParent()) {
        while (node && node.parentNode !== parent)
            node = node.parentNode;
        return node && node.nodeType === Node.ELEMENT_NODE ? node : null;
    }

    // An element's place among its parent's element children, from 1 as :nth-child counts.
    function childPlace(el) {
        let at = 1;
        for (let n = el.previousElementSibling; n; n = n.previousElementSibling)
            ++at;
        return at;
    }

    V.topBlocks = { blockParent, topBlock, childPlace };
    V.textClasses = { INLINE, BLOCK, HIDDEN, ATOM, LINE_BREAK, RULE, PRES, OBJECT_CODE,
                      BREAK_CODE, SPACE_CLASS, WORD_CLASS, PUNCT_CLASS, OBJECT_CLASS,
                      BREAK_CLASS, elementKind, isSpace, wordClass, endsWords };
})();

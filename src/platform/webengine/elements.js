// Element operations: finding elements, their attributes, markup, styles and boxes, their
// parents and paths, the document's images, scripts and linked sheets.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.elementsLoaded)
        return;
    V.elementsLoaded = true;

    const elementList = list => Array.from(list, node => V.handleFor(node));

    const operations = {
        elementsByName: name => elementList(document.getElementsByName(name)),
        elementsByTagName: tag => elementList(document.getElementsByTagName(tag)),
        head: () => V.handleFor(document.head),
        body: () => V.handleFor(document.body),
        createElement: tag => V.handleFor(document.createElement(tag)),
        appendChild: (parent, child) => {
            V.nodeFor(parent).appendChild(V.nodeFor(child));
            return true;
        },
        tagName: h => V.nodeFor(h).tagName,
        attribute: (h, name) => {
            const node = V.nodeFor(h);
            const value = node.getAttribute(name);
            if (value === null)
                return '';
            return V.isLink(node) && String(name).toLowerCase() === 'rel' ? V.writtenRel(value)
                                                                           : value;
        },
        setAttribute: (h, name, value) => {
            const node = V.nodeFor(h);
            const rel = V.isLink(node) && String(name).toLowerCase() === 'rel';
            node.setAttribute(name, rel ? V.inertRel(String(value)) : value);
            return true;
        },
        outerHTML: h => V.withHints(V.nodeFor(h).outerHTML),
        // Text as given, line ends included: markup would be parsed, and the parser turns
        // CR LF into LF.
        setText: (h, text) => {
            V.nodeFor(h).textContent = text;
            return true;
        },
        styleSheetHrefs: () => {
            // Linked sheets as the markup has them, loaded or not.
            const out = [];
            for (const link of document.querySelectorAll('link[href]')) {
                if (/(^|\s)stylesheet(\s|$)/i.test(link.getAttribute('rel') || ''))
                    out.push(link.getAttribute('href'));
            }
            return out;
        },
        boundingRect: h => {
            const r = V.nodeFor(h).getBoundingClientRect();
            return [r.left, r.top, r.width, r.height];
        },
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

    // Operations that change the document.
    const changing = new Set(['appendChild', 'setAttribute', 'setInnerHTML', 'setOuterHTML',
                              'removeAttribute', 'setStyleProperty']);
    for (const [name, fn] of Object.entries(operations))
        V.register(name, fn, changing.has(name));
})();

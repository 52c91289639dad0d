// Style sheets, element attributes and Flash objects for the style, Flash and element
// dialogs, loaded after commands.js. Everything crosses as plain values.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.stylesLoaded || !V.recorded)
        return;
    V.stylesLoaded = true;

    const isStyleLink = el => el.localName === 'link'
        && /(^|\s)stylesheet(\s|$)/i.test(el.getAttribute('rel') || '');
    const own = el => !!el.closest('[' + V.EDITOR_LAYER_ATTR + ']');

    function styleRules(list, out) {
        for (const rule of list) {
            if (rule.selectorText !== undefined)
                out.push([rule.selectorText, rule.style ? rule.style.cssText : '']);
            else if (rule.cssRules)
                styleRules(rule.cssRules, out);
        }
        return out;
    }

    // The document's sheets in document order, the editor's own left out. A sheet of another
    // origin, or one not loaded, keeps its rules from us: it is listed without them.
    V.register('styleSheets', () => {
        const out = [];
        for (const el of document.querySelectorAll('link, style')) {
            if (own(el) || (el.localName === 'link' && !isStyleLink(el)))
                continue;
            let rules = [];
            let readable = true;
            try {
                rules = el.sheet ? styleRules(el.sheet.cssRules, []) : [];
                readable = !!el.sheet;
            } catch (e) {
                readable = false;
            }
            out.push([el.localName === 'link' ? el.getAttribute('href') || '' : '', readable, rules]);
        }
        return out;
    });

    // Links a style sheet at the end of HEAD.
    V.register('addStyleSheet', href => V.recorded(() => {
        const link = document.createElement('link');
        link.setAttribute('href', href);
        link.setAttribute('rel', 'stylesheet');
        (document.head || document.documentElement).appendChild(link);
        return true;
    }));

    // The element's tag and attributes as the markup has them, the editor's own left out.
    V.register('elementAttributes', h => {
        const el = V.nodeFor(h);
        const attributes = [];
        for (const a of el.attributes) {
            if (a.name.startsWith('data-vantry-'))
                continue;
            // A hint's rel is kept inert in the page; the markup has it as written.
            attributes.push([a.name, V.isLink(el) && a.name === 'rel' ? V.writtenRel(a.value)
                                                                     : a.value]);
        }
        return { tag: el.tagName, attributes: attributes };
    });

    const paramsOf = el => Array.from(el.children).filter(c => c.localName === 'param');

    V.reads('styleSheets', 'elementAttributes', 'objectParams');
    // The PARAMs of an OBJECT: [name, value].
    V.register('objectParams', h =>
        paramsOf(V.nodeFor(h)).map(p => [p.getAttribute('name') || '', p.getAttribute('value') || '']));

    // Sets PARAM values of an OBJECT, names without case, as one undo step; a missing PARAM is
    // added at the end.
    V.register('setObjectParams', (h, params) => V.recorded(() => {
        const el = V.nodeFor(h);
        const existing = paramsOf(el);
        for (const [name, value] of params) {
            let param = existing.find(p => (p.getAttribute('name') || '').toLowerCase()
                                           === name.toLowerCase());
            if (!param) {
                param = document.createElement('param');
                param.setAttribute('name', name);
                el.appendChild(param);
            }
            param.setAttribute('value', value);
        }
        return true;
    }));
})();

// Absolute positioning, locking, layering and dragging, loaded after commands.js.
// Position and z-index are the document's own markup; the lock is an editing state only
// and never reaches the markup, so it lasts as long as the document stays loaded.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.positioningLoaded || !V.defineCommand)
        return;
    V.positioningLoaded = true;

    const { DISABLED, ENABLED, LATCHED } = V.status;
    const GRID = 10;   // pixels; the host never sets a grid size
    const EDGE = 5;

    let locked = new WeakSet();
    // Lifted elements: the style attribute they had, and the width they were given.
    const lifted = new WeakMap();

    const isAbsolute = el => !!(el && el.style && el.style.position === 'absolute');

    // The element a positioning command applies to: the element selected whole, else the
    // positioned element around the caret.
    function positioned() {
        const el = V.selectedElement();
        if (el)
            return el;
        const at = V.caretElement();
        for (let n = at; n && n !== document.body; n = n.parentElement) {
            if (isAbsolute(n))
                return n;
        }
        return null;
    }

    // For making absolute, also the block the caret stands in.
    function liftable() {
        const el = positioned();
        if (el)
            return el;
        const at = V.caretElement();
        const block = at && at.closest('div, p, table, h1, h2, h3, h4, h5, h6, blockquote, ' +
                                        'ul, ol, form, address, pre');
        return block && V.inBody(block) ? block : null;
    }

    // Lifts the element out of the flow where it stands on screen, or puts it back.
    function toggleAbsolute() {
        const el = liftable();
        if (!el)
            return false;
        if (isAbsolute(el)) {
            for (const name of ['position', 'left', 'top', 'z-index'])
                el.style.removeProperty(name);
            const was = lifted.get(el);
            if (was && was.width && el.style.width === was.width)
                el.style.removeProperty('width');
            // Untouched since it was lifted: the markup goes back exactly as it was.
            if (was && was.cssText === el.style.cssText)
                setStyleAttribute(el, was.attribute);
            else if (!el.getAttribute('style'))
                el.removeAttribute('style');
            lifted.delete(el);
            locked.delete(el);
            return true;
        }
        const before = el.getBoundingClientRect();
        const style = getComputedStyle(el);
        const was = { attribute: el.getAttribute('style'), cssText: el.style.cssText,
                      width: null };
        lifted.set(el, was);
        if (style.display !== 'inline' && !el.style.width) {
            // A lifted block would shrink to its content; it keeps its width instead.
            el.style.width = style.width;
            was.width = el.style.width;
        }
        el.style.position = 'absolute';
        el.style.left = '0px';
        el.style.top = '0px';
        const origin = el.getBoundingClientRect();
        el.style.left = Math.round(before.left - origin.left) + 'px';
        el.style.top = Math.round(before.top - origin.top) + 'px';
        const above = layers(el).filter(x => zOf(x) >= 0 && x !== el);
        el.style.zIndex = String(above.reduce((z, x) => Math.max(z, zOf(x)), 0) + 1);
        return true;
    }

    function setStyleAttribute(el, text) {
        if (text === null)
            el.removeAttribute('style');
        else
            el.setAttribute('style', text);
    }

    function zOf(el) {
        const z = parseInt(el.style.zIndex, 10);
        return Number.isNaN(z) ? 0 : z;
    }

    // The positioned elements stacked together with el (same containing block), in
    // stacking order.
    function layers(el) {
        const parent = el.offsetParent;
        const all = Array.from(document.body.querySelectorAll('[style]'))
                        .filter(x => isAbsolute(x) && x.offsetParent === parent);
        if (!all.includes(el))
            all.push(el);
        return all.map((x, i) => [x, i])
                  .sort((a, b) => zOf(a[0]) - zOf(b[0]) || a[1] - b[1])
                  .map(pair => pair[0]);
    }

    // Reorders el among the layers: above the text the layers take 1, 2, ..., below it
    // -n, ..., -1, so the order holds whatever the numbers were before.
    function restack(el, place) {
        const all = layers(el);
        let below = all.filter(x => zOf(x) < 0);
        let above = all.filter(x => zOf(x) >= 0);
        const group = below.includes(el) ? below : above;
        const i = group.indexOf(el);
        group.splice(i, 1);
        switch (place) {
        case 'front': group.push(el); break;
        case 'back': group.unshift(el); break;
        case 'forward': group.splice(Math.min(i + 1, group.length), 0, el); break;
        case 'backward': group.splice(Math.max(i - 1, 0), 0, el); break;
        case 'aboveText':
            below = below.filter(x => x !== el);
            above = above.filter(x => x !== el);
            above.push(el);
            break;
        case 'belowText':
            below = below.filter(x => x !== el);
            above = above.filter(x => x !== el);
            below.push(el);
            break;
        }
        below.forEach((x, k) => { x.style.zIndex = String(k - below.length); });
        above.forEach((x, k) => { x.style.zIndex = String(k + 1); });
        return true;
    }

    const whenPositioned = () => (V.editing() && isAbsolute(positioned()) ? ENABLED : DISABLED);

    V.defineCommand(5028, 'makeAbsolute', () => V.recorded(toggleAbsolute), () => {
        if (!V.editing())
            return DISABLED;
        const el = liftable();
        return !el ? DISABLED : isAbsolute(el) ? LATCHED : ENABLED;
    });
    V.defineCommand(5027, 'lockElement', () => {
        const el = positioned();
        if (locked.has(el))
            locked.delete(el);
        else
            locked.add(el);
        return true;
    }, () => {
        const el = positioned();
        if (!V.editing() || !isAbsolute(el))
            return DISABLED;
        return locked.has(el) ? LATCHED : ENABLED;
    });
    const layering = [[5041, 'bringToFront', 'front'], [5040, 'sendToBack', 'back'],
                      [5037, 'bringForward', 'forward'], [5036, 'sendBackward', 'backward'],
                      [5039, 'bringAboveText', 'aboveText'], [5038, 'sendBelowText', 'belowText']];
    for (const [id, name, place] of layering)
        V.defineCommand(id, name, () => V.recorded(() => restack(positioned(), place)),
                        whenPositioned);

    // ---- dragging ------------------------------------------------------------------------

    let drag = null;

    function snap(v) {
        return V.display && V.display.snapToGrid ? Math.round(v / GRID) * GRID : Math.round(v);
    }

    const listeners = {
        // Runs after the control selection's own listener has chosen the element.
        mousedown: e => {
            if (e.button !== 0 || document.designMode !== 'on')
                return;
            const el = V.selectedElement();
            if (!isAbsolute(el) || locked.has(el) || !el.contains(e.target))
                return;
            const box = el.getBoundingClientRect();
            const nearEdge = e.clientX - box.left < EDGE || box.right - e.clientX < EDGE
                             || e.clientY - box.top < EDGE || box.bottom - e.clientY < EDGE;
            if (!nearEdge && el !== e.target)
                return;
            drag = { el: el, x: e.clientX, y: e.clientY, left: parseFloat(el.style.left) || 0,
                     top: parseFloat(el.style.top) || 0, finish: null };
        },
        mousemove: e => {
            if (!drag)
                return;
            if (!(e.buttons & 1)) {
                listeners.mouseup();
                return;
            }
            if (!drag.finish)
                drag.finish = V.startRecording(true);
            drag.el.style.left = snap(drag.left + e.clientX - drag.x) + 'px';
            drag.el.style.top = snap(drag.top + e.clientY - drag.y) + 'px';
            e.preventDefault();
        },
        mouseup: () => {
            if (drag && drag.finish)
                drag.finish();
            drag = null;
        },
    };

    let seenGeneration = null;
    const invokeAdapter = V.invoke;
    V.invoke = function (name, args) {
        if (V.generation() !== seenGeneration) {
            seenGeneration = V.generation();
            locked = new WeakSet();
            drag = null;
            for (const [type, fn] of Object.entries(listeners))
                document.addEventListener(type, fn, true);
        }
        return invokeAdapter(name, args);
    };
    for (const [type, fn] of Object.entries(listeners))
        document.addEventListener(type, fn, true);
})();

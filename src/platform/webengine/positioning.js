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
    // Lifted elements: what their style held before, so that putting them back restores it.
    const lifted = new WeakMap();
    // The properties lifting writes.
    const LIFT = ['position', 'left', 'top', 'z-index', 'width'];

    const isAbsolute = el => !!(el && el.style && el.style.position === 'absolute');

    // The element positioning applies to: the element selected whole, else a positioned
    // element around the caret. A caret alone never lifts the block it stands in.
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

    function setStyleAttribute(el, text) {
        if (text === null)
            el.removeAttribute('style');
        else
            el.setAttribute('style', text);
    }

    // Puts a lifted element back: the properties lifting wrote get the values they had, the
    // rest of the style (a colour set meanwhile) stays; untouched, the attribute is restored
    // exactly as it was written.
    function restore(el, was) {
        for (const name of LIFT) {
            const old = was.properties[name];
            if (old.value)
                el.style.setProperty(name, old.value, old.priority);
            else
                el.style.removeProperty(name);
        }
        if (was.cssText === el.style.cssText)
            setStyleAttribute(el, was.attribute);
        else if (!el.getAttribute('style'))
            el.removeAttribute('style');
    }

    // Lifts the element out of the flow where it stands on screen, or puts it back.
    function toggleAbsolute() {
        const el = positioned();
        if (!el)
            return false;
        if (isAbsolute(el)) {
            const was = lifted.get(el);
            if (was) {
                restore(el, was);
            } else {
                for (const name of ['position', 'left', 'top', 'z-index'])
                    el.style.removeProperty(name);
                if (!el.getAttribute('style'))
                    el.removeAttribute('style');
            }
            lifted.delete(el);
            locked.delete(el);
            return true;
        }
        const before = el.getBoundingClientRect();
        const style = getComputedStyle(el);
        const properties = {};
        for (const name of LIFT) {
            properties[name] = { value: el.style.getPropertyValue(name),
                                 priority: el.style.getPropertyPriority(name) };
        }
        lifted.set(el, { attribute: el.getAttribute('style'), cssText: el.style.cssText,
                         properties: properties });
        // A lifted block would shrink to its content; it keeps its width instead.
        if (style.display !== 'inline' && !el.style.width)
            el.style.width = style.width;
        el.style.setProperty('position', 'absolute');
        el.style.setProperty('left', '0px');
        el.style.setProperty('top', '0px');
        const origin = el.getBoundingClientRect();
        el.style.left = Math.round(before.left - origin.left) + 'px';
        el.style.top = Math.round(before.top - origin.top) + 'px';
        const others = layers(el).filter(x => x !== el && zOf(x) >= 0);
        el.style.zIndex = String(others.reduce((z, x) => Math.max(z, zOf(x)), 0) + 1);
        return true;
    }

    function zOf(el) {
        const z = parseInt(getComputedStyle(el).zIndex, 10);
        return Number.isNaN(z) ? 0 : z;
    }

    // The element whose stacking context el is painted in.
    function contextOf(el) {
        for (let n = el.parentElement; n && n !== document.documentElement; n = n.parentElement) {
            const style = getComputedStyle(n);
            if ((style.position !== 'static' && style.zIndex !== 'auto')
                || Number(style.opacity) < 1 || style.transform !== 'none')
                return n;
        }
        return document.documentElement;
    }

    // The positioned elements painted in the same stacking context as el, bottom to top:
    // by z-index, then in document order.
    function layers(el) {
        const context = contextOf(el);
        const all = Array.from(document.body.querySelectorAll('*')).filter(
            x => x === el || (getComputedStyle(x).position !== 'static' && contextOf(x) === context));
        return all.map((x, i) => [x, zOf(x), i])
                  .sort((a, b) => a[1] - b[1] || a[2] - b[2])
                  .map(entry => entry[0]);
    }

    // Gives el a z-index that paints it right above `under` and right below `over` (either
    // may be missing), above the text (0 or more) or below it (negative). Only el changes
    // when the numbers leave room; else the others on the far side from the text all move by
    // the least that makes room, so the order of everything the user did not touch stays.
    function placeBetween(el, order, under, over, belowText) {
        const shift = (from, to, by) => {
            for (const x of order.slice(from, to)) {
                if (x !== el)
                    x.style.zIndex = String(zOf(x) + by);
            }
        };
        let z;
        if (belowText) {
            z = over ? zOf(over) - 1 : under ? Math.min(zOf(under) + 1, -1) : -1;
            if (under && z <= zOf(under))
                shift(0, order.indexOf(under) + 1, z - zOf(under) - 1);
        } else {
            z = under ? zOf(under) + 1 : over ? Math.max(zOf(over) - 1, 0) : 1;
            if (over && z >= zOf(over))
                shift(order.indexOf(over), order.length, z - zOf(over) + 1);
        }
        el.style.zIndex = String(z);
        return true;
    }

    // Moves el in the painting order: within the layers above the text or within those
    // below it, or from one to the other.
    function restack(el, place) {
        const order = layers(el);
        const below = order.filter(x => x !== el && zOf(x) < 0);
        const above = order.filter(x => x !== el && zOf(x) >= 0);
        const wasBelow = zOf(el) < 0;
        const group = wasBelow ? below : above;
        // Where el stood among the others of its group.
        const i = order.filter(x => (x === el || group.includes(x))).indexOf(el);
        switch (place) {
        case 'front':
            if (i === group.length)
                return true;
            return placeBetween(el, order, group[group.length - 1], null, wasBelow);
        case 'back':
            if (i === 0)
                return true;
            return placeBetween(el, order, null, group[0], wasBelow);
        case 'forward':
            if (i === group.length)
                return true;
            return placeBetween(el, order, group[i], group[i + 1] || null, wasBelow);
        case 'backward':
            if (i === 0)
                return true;
            return placeBetween(el, order, group[i - 2] || null, group[i - 1], wasBelow);
        case 'aboveText':
            return placeBetween(el, order, above[above.length - 1] || null, null, false);
        case 'belowText':
            return placeBetween(el, order, below[below.length - 1] || null, null, true);
        }
        return false;
    }

    const whenPositioned = () => (V.editing() && isAbsolute(positioned()) ? ENABLED : DISABLED);

    V.defineCommand(5028, 'makeAbsolute', () => V.recorded(toggleAbsolute), () => {
        if (!V.editing())
            return DISABLED;
        const el = positioned();
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
            if (e.button !== 0 || !V.editable())
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

    // A new document has no locked elements and no drag, and lost the listeners.
    function followDocument() {
        locked = new WeakSet();
        drag = null;
        for (const [type, fn] of Object.entries(listeners))
            document.addEventListener(type, fn, true);
    }
    V.onNewDocument(followDocument);
    followDocument();
})();

// Resize handles for a selected image or table, loaded after positioning.js. The handles
// live in a layer of their own, like the detail marks: a host element after the body with
// a closed shadow tree, left out of the saved markup and invisible to the undo history's
// observer. Dragging a handle writes the element's width and height attributes (its style
// lengths go, or they would win over them) as one undo step; Shift keeps the proportions.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.resizeLoaded || !V.EDITOR_LAYER_ATTR || !V.startRecording)
        return;
    V.resizeLoaded = true;

    const SIZE = 7;    // pixels, a handle's side
    const MIN = 1;     // no element is dragged smaller than this
    const RESIZABLE = new Set(['IMG', 'TABLE']);
    // Each handle: which edges it moves, horizontally and vertically (-1 left/top, 1
    // right/bottom, 0 none).
    const HANDLES = [[-1, -1], [0, -1], [1, -1], [1, 0], [1, 1], [0, 1], [-1, 1], [-1, 0]];
    const CURSORS = ['nwse', 'ns', 'nesw', 'ew', 'nwse', 'ns', 'nesw', 'ew'];
    const LAYER_STYLE = ':host { all: initial; position: absolute; left: 0; top: 0; ' +
        'width: 0; height: 0; overflow: visible; z-index: 2147483647; user-select: none; }\n' +
        '.handle { position: absolute; box-sizing: border-box; width: ' + SIZE + 'px; ' +
        'height: ' + SIZE + 'px; background: #fff; border: 1px solid #000; }\n' +
        '@media print { :host { display: none !important; } }';

    let host = null;
    let handles = [];
    let target = null;
    let drag = null;
    let queued = false;

    function resizable() {
        if (!V.editable())
            return null;
        const el = V.selectedElement();
        return el && RESIZABLE.has(el.tagName) && el.isConnected ? el : null;
    }

    function ensureLayer() {
        if (host && host.isConnected && host.parentNode === document.documentElement)
            return;
        host = document.createElement('vantry-handles');
        host.setAttribute(V.EDITOR_LAYER_ATTR, '');
        host.setAttribute('contenteditable', 'false');
        const root = host.attachShadow({ mode: 'closed' });
        const style = document.createElement('style');
        style.textContent = LAYER_STYLE;
        root.append(style);
        handles = HANDLES.map((_, i) => {
            const h = document.createElement('div');
            h.className = 'handle';
            h.style.cursor = CURSORS[i] + '-resize';
            root.append(h);
            return h;
        });
        document.documentElement.appendChild(host);
    }

    // Where each handle's centre is for a box, in page coordinates.
    function centres(box) {
        return HANDLES.map(([dx, dy]) => [
            box.left + window.scrollX + (dx + 1) / 2 * box.width,
            box.top + window.scrollY + (dy + 1) / 2 * box.height]);
    }

    function draw() {
        queued = false;
        target = drag ? drag.el : resizable();
        if (!target) {
            if (host)
                host.remove();
            host = null;
            return;
        }
        ensureLayer();
        centres(target.getBoundingClientRect()).forEach(([x, y], i) => {
            handles[i].style.left = Math.round(x - SIZE / 2) + 'px';
            handles[i].style.top = Math.round(y - SIZE / 2) + 'px';
        });
    }

    function schedule() {
        if (queued)
            return;
        queued = true;
        requestAnimationFrame(draw);
    }

    // The handle under a point of the window, or -1.
    function handleAt(x, y) {
        if (!target)
            return -1;
        const box = target.getBoundingClientRect();
        const reach = SIZE / 2 + 1;
        return centres(box).findIndex(([cx, cy]) =>
            Math.abs(cx - window.scrollX - x) <= reach && Math.abs(cy - window.scrollY - y) <= reach);
    }

    function writeSize(el, width, height) {
        for (const name of ['width', 'height']) {
            if (el.style && el.style.getPropertyValue(name))
                el.style.removeProperty(name);
        }
        if (el.getAttribute('style') === '')
            el.removeAttribute('style');
        el.setAttribute('width', String(width));
        el.setAttribute('height', String(height));
    }

    function finish() {
        if (drag && drag.finish)
            drag.finish();
        drag = null;
        schedule();
    }

    const windowListeners = {
        // Before the document's own listeners, so that a press on a handle starts a resize
        // rather than a selection.
        mousedown: e => {
            if (e.button !== 0)
                return;
            const index = handleAt(e.clientX, e.clientY);
            if (index < 0)
                return;
            const box = target.getBoundingClientRect();
            drag = { el: target, handle: HANDLES[index], x: e.clientX, y: e.clientY,
                     width: box.width, height: box.height, finish: null };
            e.preventDefault();
            e.stopPropagation();
        },
        mousemove: e => {
            if (!drag)
                return;
            if (!(e.buttons & 1)) {
                finish();
                return;
            }
            resizeTo(e);
            e.preventDefault();
            e.stopPropagation();
        },
        // The size follows the release too, which may come with Shift pressed or released.
        mouseup: e => {
            if (!drag)
                return;
            if (e.clientX !== drag.x || e.clientY !== drag.y)
                resizeTo(e);
            finish();
            e.stopPropagation();
        },
        resize: schedule,
        scroll: schedule,
    };

    // The size for the pointer's place in a drag.
    function resizeTo(e) {
        const [dx, dy] = drag.handle;
        let width = drag.width + dx * (e.clientX - drag.x);
        let height = drag.height + dy * (e.clientY - drag.y);
        if (e.shiftKey && drag.width > 0 && drag.height > 0) {
            // The handle's main direction decides; an edge handle moves the other side
            // along.
            const ratio = drag.width / drag.height;
            if (dy === 0 || (dx !== 0 && Math.abs(width / drag.width - 1)
                                           >= Math.abs(height / drag.height - 1)))
                height = width / ratio;
            else
                width = height * ratio;
        } else {
            if (dx === 0)
                width = drag.width;
            if (dy === 0)
                height = drag.height;
        }
        if (!drag.finish)
            drag.finish = V.startRecording(true);
        writeSize(drag.el, Math.max(MIN, Math.round(width)), Math.max(MIN, Math.round(height)));
        schedule();
    }

    const documentListeners = { selectionchange: schedule, keyup: schedule, input: schedule };

    // Loading a document takes the listeners of the window as well as the document's.
    function listen() {
        for (const [type, fn] of Object.entries(windowListeners))
            window.addEventListener(type, fn, true);
        for (const [type, fn] of Object.entries(documentListeners))
            document.addEventListener(type, fn, true);
    }

    V.onNewDocument(() => {
        drag = null;
        if (host)
            host.remove();
        host = null;
        listen();
    });
    // An operation may select an element, or move or resize the one selected.
    V.afterOperations(schedule);
    listen();

    // For tests: the centres of the handles shown, in window coordinates, in the order
    // top-left, top, top-right, right, bottom-right, bottom, bottom-left, left.
    V.register('resizeHandles', () => {
        draw();
        if (!host || !target)
            return [];
        const box = target.getBoundingClientRect();
        return centres(box).map(([x, y]) => [Math.round(x - window.scrollX),
                                             Math.round(y - window.scrollY)]);
    });
    V.reads('resizeHandles');
})();

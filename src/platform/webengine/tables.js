// Table commands on a grid model, loaded after commands.js. A table is read into a grid of
// slots, one per row and column, each naming the cell that covers it, so that rowspan and
// colspan are respected: every row keeps the table's width, and only the cells a command
// deletes lose their content.
(function () {
    'use strict';

    const V = window.__vantry;
    if (!V || V.tablesLoaded || !V.defineCommand)
        return;
    V.tablesLoaded = true;

    const { DISABLED, ENABLED } = V.status;

    // The failures the caller tells apart: removing the last row, column or cell.
    const LAST_ROW = 'The last row of a table cannot be deleted';
    const LAST_COLUMN = 'The last column of a table cannot be deleted';
    const LAST_CELL = 'The last cell of a table cannot be deleted';
    // The same bounds as the tables hosts insert from arguments.
    const MAX_ROWS = 1000, MAX_COLUMNS = 100;
    const TOO_BIG = 'A new table can have at most 1000 rows and 100 columns';

    function gridOf(table) {
        const rows = Array.from(table.rows);
        const grid = rows.map(() => []);
        const where = new Map();   // cell -> {r, c, rs, cs}
        rows.forEach((tr, r) => {
            let c = 0;
            for (const cell of tr.cells) {
                while (grid[r][c])
                    ++c;
                const rs = cell.rowSpan > 0 ? Math.min(cell.rowSpan, rows.length - r)
                                            : rows.length - r;
                const cs = Math.max(1, cell.colSpan);
                for (let dr = 0; dr < rs; ++dr) {
                    for (let dc = 0; dc < cs; ++dc)
                        grid[r + dr][c + dc] = cell;
                }
                where.set(cell, { r: r, c: c, rs: rs, cs: cs });
                c += cs;
            }
        });
        const width = grid.reduce((w, row) => Math.max(w, row.length), 0);
        return { table: table, rows: rows, grid: grid, where: where, width: width };
    }

    function currentCell() {
        const el = V.caretElement();
        const cell = el && el.closest('td, th');
        return cell && V.inBody(cell) ? cell : null;
    }

    // The grid rectangle the selection covers: from the cell of its start to the cell of its
    // end, grown until no cell sticks out of it.
    function selectedBlock(g) {
        const r = V.selectionRange();
        const first = currentCell();
        let last = first;
        if (r && !r.collapsed) {
            const end = r.endContainer.nodeType === 1 ? r.endContainer : r.endContainer.parentElement;
            const cell = end && end.closest('td, th');
            if (cell && g.where.has(cell))
                last = cell;
        }
        const a = g.where.get(first), b = g.where.get(last);
        let top = Math.min(a.r, b.r), left = Math.min(a.c, b.c);
        let bottom = Math.max(a.r + a.rs, b.r + b.rs) - 1;
        let right = Math.max(a.c + a.cs, b.c + b.cs) - 1;
        for (let grown = true; grown;) {
            grown = false;
            for (let y = top; y <= bottom; ++y) {
                for (let x = left; x <= right; ++x) {
                    const p = g.grid[y][x] && g.where.get(g.grid[y][x]);
                    if (!p)
                        continue;
                    if (p.r < top || p.c < left || p.r + p.rs - 1 > bottom
                        || p.c + p.cs - 1 > right) {
                        top = Math.min(top, p.r);
                        left = Math.min(left, p.c);
                        bottom = Math.max(bottom, p.r + p.rs - 1);
                        right = Math.max(right, p.c + p.cs - 1);
                        grown = true;
                    }
                }
            }
        }
        return { top: top, left: left, bottom: bottom, right: right };
    }

    function newCell(like) {
        const cell = document.createElement(like && like.tagName === 'TH' ? 'th' : 'td');
        return cell;
    }

    function caretInto(cell) {
        const r = document.createRange();
        r.selectNodeContents(cell);
        r.collapse(true);
        const s = document.getSelection();
        s.removeAllRanges();
        s.addRange(r);
    }

    // The first cell of row r that starts at column c or after it, to insert in front of.
    function cellFrom(g, r, c) {
        for (let x = c; x < g.grid[r].length; ++x) {
            const cell = g.grid[r][x];
            const p = cell && g.where.get(cell);
            if (p && p.r === r && p.c === x)
                return cell;
        }
        return null;
    }

    function setSpan(cell, name, value) {
        if (value > 1)
            cell.setAttribute(name, String(value));
        else
            cell.removeAttribute(name);
    }

    // A new row above (or below) the rows of the current cell, as wide as the table.
    function insertRow(below) {
        const cell = currentCell();
        const g = gridOf(cell.closest('table'));
        const p = g.where.get(cell);
        const at = below ? p.r + p.rs : p.r;
        const tr = document.createElement('tr');
        const stretched = new Set();
        for (let c = 0; c < g.width;) {
            const over = at < g.rows.length ? g.grid[at][c] : null;
            const q = over && g.where.get(over);
            if (q && q.r < at) {
                // A cell that spans across the new row grows over it.
                if (!stretched.has(over)) {
                    stretched.add(over);
                    setSpan(over, 'rowspan', q.rs + 1);
                }
                c += q.cs;
                continue;
            }
            const like = g.grid[Math.min(at, g.rows.length - 1)][c];
            tr.appendChild(newCell(like));
            ++c;
        }
        const ref = at < g.rows.length ? g.rows[at] : null;
        const parent = ref ? ref.parentNode : g.rows[g.rows.length - 1].parentNode;
        parent.insertBefore(tr, ref);
        // The caret stays where it was: moving it would make the engine lay the whole
        // table out at once, which in a long table costs more than the edit.
        return true;
    }

    // A new column left (or right) of the columns of the current cell, in every row.
    function insertColumn(after) {
        const cell = currentCell();
        const g = gridOf(cell.closest('table'));
        const p = g.where.get(cell);
        const at = after ? p.c + p.cs : p.c;
        const widened = new Set();
        g.rows.forEach((tr, r) => {
            const over = at < g.grid[r].length ? g.grid[r][at] : null;
            const q = over && g.where.get(over);
            if (q && q.c < at) {
                if (!widened.has(over)) {
                    widened.add(over);
                    setSpan(over, 'colspan', q.cs + 1);
                }
                return;
            }
            if (q && q.r < r)
                return;   // covered by the cell inserted at the spanning cell's first row
            const td = newCell(over || g.grid[r][Math.max(0, at - 1)]);
            if (q && q.rs > 1)
                setSpan(td, 'rowspan', q.rs);
            tr.insertBefore(td, cellFrom(g, r, at));
        });
        return true;
    }

    // A new cell in front of the current one; the row's last slot moves out, so every row
    // is padded by one cell to keep the table rectangular.
    function insertCell() {
        const cell = currentCell();
        const g = gridOf(cell.closest('table'));
        const p = g.where.get(cell);
        const td = newCell(cell);
        cell.parentNode.insertBefore(td, cell);
        g.rows.forEach((tr, r) => {
            if (r !== p.r)
                tr.appendChild(newCell(tr.cells[tr.cells.length - 1]));
        });
        caretInto(td);
        return true;
    }

    function deleteRows() {
        const cell = currentCell();
        const g = gridOf(cell.closest('table'));
        const b = selectedBlock(g);
        if (b.top === 0 && b.bottom === g.rows.length - 1)
            throw new Error(LAST_ROW);
        const below = b.bottom + 1 < g.rows.length ? b.bottom + 1 : -1;
        for (const [c, q] of g.where) {
            const end = q.r + q.rs - 1;
            if (end < b.top || q.r > b.bottom)
                continue;
            const overlap = Math.min(end, b.bottom) - Math.max(q.r, b.top) + 1;
            if (q.r < b.top) {
                setSpan(c, 'rowspan', q.rs - overlap);
            } else if (end > b.bottom && below >= 0) {
                // A cell that reaches past the deleted rows keeps its content below them.
                g.rows[below].insertBefore(c, cellFrom(g, below, q.c));
                setSpan(c, 'rowspan', q.rs - overlap);
            }
        }
        for (let r = b.top; r <= b.bottom; ++r)
            g.rows[r].remove();
        const next = g.rows[below >= 0 ? below : b.top - 1];
        if (next && next.cells.length)
            caretInto(next.cells[0]);
        return true;
    }

    function deleteColumns() {
        const cell = currentCell();
        const g = gridOf(cell.closest('table'));
        const b = selectedBlock(g);
        if (b.left === 0 && b.right >= g.width - 1)
            throw new Error(LAST_COLUMN);
        let keep = null;
        for (const [c, q] of g.where) {
            const end = q.c + q.cs - 1;
            if (end < b.left || q.c > b.right) {
                keep = keep || c;
                continue;
            }
            const overlap = Math.min(end, b.right) - Math.max(q.c, b.left) + 1;
            if (overlap >= q.cs)
                c.remove();
            else
                setSpan(c, 'colspan', q.cs - overlap);
        }
        for (const tr of g.rows) {
            if (tr.cells.length)
                keep = keep && keep.isConnected ? keep : tr.cells[0];
        }
        if (keep && keep.isConnected)
            caretInto(keep);
        return true;
    }

    // The cells the block covers.
    function cellsIn(g, b) {
        const cells = new Set();
        for (let y = b.top; y <= b.bottom; ++y) {
            for (let x = b.left; x <= b.right; ++x) {
                if (g.grid[y][x])
                    cells.add(g.grid[y][x]);
            }
        }
        return cells;
    }

    // Deletes the selected cells; later cells of the row move left and the row gets empty
    // cells at its end, so that it stays as wide as the others.
    function deleteCells() {
        const cell = currentCell();
        const g = gridOf(cell.closest('table'));
        const b = selectedBlock(g);
        const doomed = cellsIn(g, b);
        if (doomed.size >= g.where.size)
            throw new Error(LAST_CELL);
        for (const c of doomed)
            c.remove();
        for (let y = b.top; y <= b.bottom; ++y) {
            for (let x = b.left; x <= b.right; ++x)
                g.rows[y].appendChild(newCell(cell));
        }
        const row = g.rows[b.top];
        if (row.cells.length)
            caretInto(row.cells[Math.min(b.left, row.cells.length - 1)]);
        return true;
    }

    // Wrappers that may go when they hold nothing and carry no attribute. Any other element
    // is content even without text: a form control, an anchor, an embed, a rule.
    const WRAPPERS = new Set(['DIV', 'P', 'SPAN', 'FONT', 'B', 'I', 'U', 'S', 'STRIKE', 'STRONG',
                              'EM', 'SMALL', 'BIG', 'SUB', 'SUP', 'CENTER']);

    function isBlank(node) {
        if (node.nodeType === Node.TEXT_NODE)
            return node.data.trim() === '';
        if (node.nodeType !== Node.ELEMENT_NODE)
            return false;
        if (node.tagName === 'BR')
            return true;
        return WRAPPERS.has(node.tagName) && !node.attributes.length
               && Array.from(node.childNodes).every(isBlank);
    }

    const hasContent = cell => !Array.from(cell.childNodes).every(isBlank);

    // Merges the selected cells into the top left one, contents in reading order. With a
    // caret in one cell, that cell merges with its right neighbour of the same height.
    function mergeCells() {
        const cell = currentCell();
        const g = gridOf(cell.closest('table'));
        let b = selectedBlock(g);
        if (b.top === b.bottom && b.left === b.right
            || g.grid[b.top][b.left] === g.grid[b.bottom][b.right]) {
            const p = g.where.get(cell);
            const right = g.grid[p.r][p.c + p.cs];
            const q = right && g.where.get(right);
            if (!q || q.r !== p.r || q.rs !== p.rs)
                return false;
            b = { top: p.r, left: p.c, bottom: p.r + p.rs - 1, right: q.c + q.cs - 1 };
        }
        const target = g.grid[b.top][b.left];
        const seen = new Set([target]);
        for (let y = b.top; y <= b.bottom; ++y) {
            for (let x = b.left; x <= b.right; ++x) {
                const c = g.grid[y][x];
                if (!c || seen.has(c))
                    continue;
                seen.add(c);
                if (hasContent(c)) {
                    if (hasContent(target))
                        target.appendChild(document.createElement('br'));
                    while (c.firstChild)
                        target.appendChild(c.firstChild);
                }
                c.remove();
            }
        }
        setSpan(target, 'rowspan', b.bottom - b.top + 1);
        setSpan(target, 'colspan', b.right - b.left + 1);
        caretInto(target);
        return true;
    }

    // Splits a spanning cell back into single cells; a single cell splits into two columns,
    // the cells above and below it growing over the new column.
    function splitCell() {
        const cell = currentCell();
        const g = gridOf(cell.closest('table'));
        const p = g.where.get(cell);
        if (p.cs > 1 || p.rs > 1) {
            for (let y = p.r; y < p.r + p.rs; ++y) {
                const ref = y === p.r ? cell.nextSibling : cellFrom(g, y, p.c + p.cs);
                for (let x = p.c; x < p.c + p.cs; ++x) {
                    if (y === p.r && x === p.c)
                        continue;
                    g.rows[y].insertBefore(newCell(cell), ref);
                }
            }
            cell.removeAttribute('rowspan');
            cell.removeAttribute('colspan');
            caretInto(cell);
            return true;
        }
        const stretched = new Set();
        for (let y = 0; y < g.rows.length; ++y) {
            const c = g.grid[y][p.c];
            if (!c || c === cell || stretched.has(c))
                continue;
            stretched.add(c);
            setSpan(c, 'colspan', g.where.get(c).cs + 1);
        }
        cell.parentNode.insertBefore(newCell(cell), cell.nextSibling);
        caretInto(cell);
        return true;
    }

    // The parameters' attribute texts are unquoted, as the insert-table dialog has always
    // written them ("border= cellPadding=2 width=100%"): a value ends at the next blank, and
    // an empty value is no attribute rather than one that swallows the next.
    function attributeText(text) {
        let out = '';
        const re = /([^\s="']+)(?:=("[^"]*"|'[^']*'|[^\s"']*))?/g;
        let m;
        while ((m = re.exec(String(text || ''))) !== null) {
            if (m[2] === undefined) {
                out += ' ' + m[1];
                continue;
            }
            const value = /^["']/.test(m[2]) ? m[2].slice(1, -1) : m[2];
            if (value !== '')
                out += ' ' + m[1] + '="' + value.replace(/&/g, '&amp;').replace(/"/g, '&quot;') + '"';
        }
        return out;
    }

    // Inserts a table built from the insert-table parameters at the selection.
    function insertTable(argument) {
        const a = argument || {};
        const rows = Math.max(1, parseInt(a.NumRows, 10) || 1);
        const cols = Math.max(1, parseInt(a.NumCols, 10) || 1);
        if (rows > MAX_ROWS || cols > MAX_COLUMNS)
            throw new Error(TOO_BIG);
        const cellAttrs = attributeText(a.CellAttrs);
        let html = '<table' + attributeText(a.TableAttrs) + '>';
        if (a.Caption)
            html += '<caption>' + a.Caption + '</caption>';
        html += '<tbody>';
        for (let r = 0; r < rows; ++r)
            html += '<tr>' + ('<td' + cellAttrs + '></td>').repeat(cols) + '</tr>';
        html += '</tbody></table>';
        return document.execCommand('insertHTML', false, V.inertMarkup(html));
    }

    const inCell = () => (V.editing() && currentCell() ? ENABLED : DISABLED);
    const table = fn => (option, argument) => V.recorded(() => fn(argument));

    V.defineCommand(5021, 'insertRow', table(a => insertRow(a === 'below' || a === true)),
                    inCell);
    V.defineCommand(5020, 'insertColumn', table(a => insertColumn(a === 'after' || a === true)),
                    inCell);
    V.defineCommand(5019, 'insertCell', table(insertCell), inCell);
    V.defineCommand(5007, 'deleteRows', table(deleteRows), inCell);
    V.defineCommand(5006, 'deleteColumns', table(deleteColumns), inCell);
    V.defineCommand(5005, 'deleteCells', table(deleteCells), inCell);
    V.defineCommand(5029, 'mergeCells', table(mergeCells), inCell);
    V.defineCommand(5047, 'splitCell', table(splitCell), inCell);
    V.bulkCommands([5021, 5020, 5019, 5007, 5006, 5005, 5029, 5047]);
    V.defineCommand(5022, 'insertTable', (option, argument) => insertTable(argument), () => {
        if (!V.editing())
            return DISABLED;
        const r = V.selectionRange();
        return r && V.inBody(r.startContainer) ? ENABLED : DISABLED;
    });

    // A property dialog's fields of an element, read in one call: attributes (null when
    // absent) and style properties.
    V.register('elementFields', (h, attributes, styles) => {
        const el = V.nodeFor(h);
        return { attributes: attributes.map(name => el.getAttribute(name)),
                 styles: styles.map(name => (el.style ? el.style.getPropertyValue(name) : '')) };
    });
    // A property dialog's answer as one undo step: [kind, name, value] with kind 'set',
    // 'remove' or 'style' (an empty style value removes the property).
    V.register('editElementFields', (h, edits) => V.recorded(() => {
        const el = V.nodeFor(h);
        for (const [kind, name, value] of edits) {
            if (kind === 'set')
                el.setAttribute(name, value);
            else if (kind === 'remove')
                el.removeAttribute(name);
            else if (value === '')
                el.style.removeProperty(name);
            else
                el.style.setProperty(name, value);
        }
        if (el.getAttribute('style') === '')
            el.removeAttribute('style');
        return true;
    }));

    // The table's rows and cells, not those of nested tables, its width in columns, and how
    // many of each a deletion at the selection would take (none when the selection is not in
    // one of its cells), so that a guard can refuse to take the last.
    V.reads('elementFields', 'tableParts');
    V.register('tableParts', h => {
        const g = gridOf(V.nodeFor(h));
        const parts = { rows: g.rows.length, columns: g.width, cells: g.where.size,
                        selectedRows: 0, selectedColumns: 0, selectedCells: 0 };
        const cell = currentCell();
        if (cell && g.where.has(cell)) {
            const b = selectedBlock(g);
            parts.selectedRows = b.bottom - b.top + 1;
            parts.selectedColumns = b.right - b.left + 1;
            parts.selectedCells = cellsIn(g, b).size;
        }
        return parts;
    });

    // ---- Tab between cells ------------------------------------------------------------

    // Tab puts the caret into the next cell of the table in reading order, Shift+Tab into
    // the previous one; Tab in the last cell adds a row below first, as web editors do.
    // Outside a table Tab keeps its ordinary meaning.
    function tabBetweenCells(e) {
        if (e.key !== 'Tab' || e.ctrlKey || e.altKey || e.metaKey || e.defaultPrevented
            || !V.editing())
            return;
        const cell = currentCell();
        if (!cell)
            return;
        e.preventDefault();
        const table = cell.closest('table');
        const cells = Array.from(table.rows).flatMap(tr => Array.from(tr.cells));
        const at = cells.indexOf(cell);
        if (e.shiftKey) {
            if (at > 0)
                caretInto(cells[at - 1]);
            return;
        }
        if (at + 1 < cells.length) {
            caretInto(cells[at + 1]);
            return;
        }
        const finish = V.startRecording(true);
        try {
            insertRow(true);
        } finally {
            finish();
        }
        const rows = table.rows;
        const first = rows[rows.length - 1].cells[0];
        if (first)
            caretInto(first);
    }

    const attach = () => document.addEventListener('keydown', tabBetweenCells, true);
    V.onNewDocument(attach);
    attach();

    // Each row's width in grid slots, for checks that the table stayed rectangular.
    V.tableRowWidths = h => gridOf(V.nodeFor(h)).grid.map(row => row.filter(Boolean).length);
})();

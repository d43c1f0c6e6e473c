// Tests of the page's modules without a server behind them; run in the page, answers with what is wrong.
const wrong = [];
const same = (is, should, what) => {
    const [a, b] = [JSON.stringify(is), JSON.stringify(should)];
    if (a !== b) wrong.push(`${what}: ${a}, not ${b}`);
};

const { readTyped, splitUnit } = await import('/values.js');
const length = { quantity: 'diameter' }, words = { quantity: 'text' };
for (const [typed, state, plain] of [
    ['', 'empty', false], ['  ', 'empty', false], ['0', 'value', true], ['3.0', 'value', true], ['.5', 'value', true],
    ['-1e3', 'value', true], [' 12 ', 'value', true], ['3.', 'begun'], ['.', 'begun'], ['-', 'begun'], ['1e', 'begun'],
    ['1e-', 'begun'], ['1e999', 'wrong'], ['0,5', 'wrong'], ['1,500', 'wrong'], ['1,500.25', 'wrong'],
    ['250 mm', 'value', false], ['7/8 in', 'value', false], ['1 1/2 in', 'value', false], ['ten', 'value', false],
]) {
    const read = readTyped(length, typed);
    same(read.state, state, `state of "${typed}"`);
    if (plain !== undefined) same(read.plain, plain, `pause after "${typed}"`);
    same(Boolean(read.reason), state === 'begun' || state === 'wrong', `reason of "${typed}"`);
}
same(readTyped(length, '1,500').reason.includes('1500'), true, 'a comma between thousands');
same(readTyped(length, '0,5', true).state, 'value', 'a comma where the file has it as its sign');
same(readTyped(words, '3.').state, 'value', 'a text that ends in a point');
same(splitUnit('4 mm', ['in.', 'mm']), { number: '4', unit: 'mm' }, 'a unit of the list');
same(splitUnit('4 in', ['in.', 'mm']), { number: '4', unit: 'in.' }, 'a unit in another spelling');
same(splitUnit('full vacuum', ['psig']), null, 'a text without a number');
same(splitUnit('1 1/2 in', ['in.']), null, 'a number of two parts');

const { copiedDrawing, copiedText } = await import('/copy.js');
const drawing = copiedDrawing(`<?xml version="1.0"?><svg xmlns="http://www.w3.org/2000/svg" aria-label="a > b" style="width:1mm"
    viewBox="0 0 1 1" onload="x()"><script>x()</script><style>x</style><image href="x"/><foreignObject><p>x</p></foreignObject>
    <a href="javascript:x()"><text>link</text></a><use href="#x"/><g fill="url(#x)" transform="rotate(90, 1, 2)" onclick="x()">
    <path d="M0 0L1 1" style="fill:red"/><text x="1" data-field="B">a &lt; b</text></g></svg>`);
same([...drawing.querySelectorAll('*')].map((e) => e.localName), ['g', 'path', 'text'], 'elements of a drawing');
same([...drawing.attributes].map((a) => a.name), ['aria-label', 'viewBox'], 'attributes of a drawing');
same([...drawing.querySelector('g').attributes].map((a) => a.name), ['transform'], 'attributes of a group');
same([...drawing.querySelector('path').attributes].map((a) => a.name), ['d'], 'attributes of a path');
same(drawing.querySelector('text').textContent, 'a < b', 'words of a drawing');
same(copiedDrawing('<svg xmlns="http://www.w3.org/2000/svg"><g>'), null, 'a drawing that is cut off');
same(copiedDrawing('<p xmlns="http://www.w3.org/1999/xhtml">x</p>'), null, 'no drawing');
const box = document.createElement('div');
box.append(copiedText(`<section class="a" onclick="x()"><pre>1 &lt; 2</pre><img src=x onerror="x()"><script>x()</` +
    `script><a href="javascript:x()">x</a><iframe src="x"></iframe></section>`));
same(box.innerHTML, '<section class="a"><pre>1 &lt; 2</pre></section>', 'a calculation');

const { EditQueue } = await import('/queue.js');
const pause = (ms) => new Promise((go) => setTimeout(go, ms));
{
    const sent = [], shown = [], lost = [], busy = [];
    let under = 0, most = 0;
    const queue = new EditQueue({
        send: async (items, sequence) => {
            most = Math.max(most, ++under);
            sent.push(items.map((item) => item.path ?? item.step ?? item));
            await pause(15);
            --under;
            if (items.some(({ path }) => path === 'bad')) throw new Error('no');
            return sequence;
        },
        show: (answer, newest) => shown.push([answer, newest]),
        fail: (error, items) => lost.push(...items.map(({ path }) => path)),
        busy: (whether) => busy.push(whether),
    });
    queue.add({ path: 'a' });
    queue.add({ path: 'b' });
    queue.add({ path: 'c' });
    queue.add({ step: 'undo' });
    queue.add({ path: 'd' });
    await queue.settled();
    same(sent, [['a'], ['b', 'c'], ['undo'], ['d']], 'edits in their order');
    same(most, 1, 'requests at once');
    same(shown.map(([, newest]) => newest), [false, false, false, true], 'the newest alone is shown');
    same(shown.at(-1)[0], 5, 'number of the newest');
    same(busy.at(-1), false, 'the end');
    queue.add({ path: 'bad' });
    queue.add({ path: 'after' });
    await queue.settled();
    same(lost, ['bad', 'after'], 'what has no answer is handed back');
    queue.add();
    await queue.settled();
    same([sent.at(-1), shown.at(-1)[1]], [[], true], 'it goes on after that');
}

const { keysOfLabel } = await import('/drawing.js');
const kind = { keys: [{ name: 'B', symbol: 'B' }, { name: 'g0', symbol: 'go' }, { name: 'L', symbol: 'L' }, { name: 'length', symbol: 'L' }, { name: 'Fid' }] };
same(keysOfLabel('B, Fid = Ø5.761', kind, () => true), ['B', 'Fid'], 'two fields of a dimension');
same(keysOfLabel('g0 = .432', kind, () => true), ['g0'], 'a field by its name');
same(keysOfLabel('L = 8', kind, (name) => name !== 'L'), ['length'], 'the field that is read');
same(keysOfLabel('Scale 1 : 2, dimensions in inches', kind, () => true), [], 'no dimension');
same(keysOfLabel('hT = 1.87', kind, () => true), [], 'a dimension without a field');
return wrong;

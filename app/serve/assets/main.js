// The page: what the user does goes to the server, what it answers is shown.

import { ApiError, enter, get, post } from './api.js';
import { choose } from './dialogs.js';
import { byId, make, setText } from './dom.js';
import { downloadAs, newFile, openFile, saveFile, showChanges } from './files.js';
import { Form } from './form.js';
import { Panel } from './panel.js';
import { pickFor } from './pickers.js';
import { EditQueue } from './queue.js';
import { Tree } from './tree.js';
import { formView, treeRows } from './views.js';
import { Vocabulary } from './vocabulary.js';

const LOOK = 3000; // ms between looks at the disk
const PICKED = 12000; // ms that a choice of a catalogue is told
const OPENED = 'tarvane-document';

const unsent = []; // edits that found no server
let vocabulary = null, state = null, result = null, chosen = 'vessel', stale = false, revealed = null;

const form = new Form(byId('fields'), byId('help'), {
    edit: (path, change) => {
        clearNotice('failure');
        queue.add({ path, ...change });
    },
    pick: (key) => attempt(() => fill(key)),
    focused: (key) => panel.highlight(key?.name),
});
const tree = new Tree(byId('nodes'), byId('adding'), {
    choose: (path) => choosePath(path), add: (kind) => addComponent(kind), remove: (row) => removeComponent(row),
});
const panel = new Panel({
    choose: (path, key) => {
        if (key) showTab('form');
        choosePath(path, key);
    },
    dimension: (names) => revealField(names[0]),
    hovered: (names) => form.mark(names),
});

const queue = new EditQueue({
    send: (items, sequence) => {
        const request = { document: state.document, component: isComponent(chosen) ? chosen : undefined, sequence };
        if (items[0]?.step) return post(`/api/${items[0].step}`, request);
        if (items.length > 0) return post('/api/edit', { ...request, version: state.version, edits: items });
        return post('/api/calculate', { ...request, edits: [] });
    },
    show: (answer, newest) => {
        if (answer.state) state = answer.state;
        if (!newest) return;
        result = answer.result;
        stale = false;
        clearNotice('silence');
        showAll(answer.sequence);
    },
    fail: (error, items) => failed(error, items),
    busy: (whether) => {
        stale = whether || stale;
        panel.wait(stale, result?.verdict === 'faulty');
        if (!whether) byId('results').setAttribute('aria-busy', 'false');
    },
});

const isComponent = (path) => /\[\d+\]$/.test(path);

// ---- what the user does ----------------------------------------------------------------------------------

async function attempt(action) {
    try {
        return await action();
    } catch (error) {
        if (!(error instanceof ApiError)) console.error(error);
        notice('failure', error.message, []);
        return undefined;
    }
}

async function settle() {
    form.take();
    await queue.settled();
}

function choosePath(path, key) {
    form.take();
    revealed = key ?? null;
    if (path === chosen) {
        reveal();
        return;
    }
    chosen = path;
    if (document.body.dataset.tab === 'tree') showTab('form');
    showForm();
    showTree();
    queue.add();
}

function revealField(name) {
    showTab('form');
    form.reveal(name);
}

function reveal() {
    if (revealed && form.reveal(revealed)) revealed = null;
}

function addComponent(kind) {
    form.take();
    const number = state.components.filter((one) => one.kind === kind).length;
    const title = kind === 'mdmt' ? 'Metal temperature' : kind === 'external' ? 'External' : kind.charAt(0).toUpperCase() + kind.slice(1);
    const value = { description: freeName(`${title} ${number + 1}`) };
    if (kind === 'flange') value.type = 'weld neck';
    if (kind === 'shell' || kind === 'external') value.kind = 'cylinder';
    chosen = `${kind}[${number}]`;
    revealed = 'description';
    queue.add({ path: chosen, value });
}

function freeName(name) {
    let free = name;
    for (let i = 2; state.components.some(({ description }) => description === free); ++i) free = `${name} (${i})`;
    return free;
}

function removeComponent(row) {
    chosen = 'vessel';
    queue.add({ path: row.path, remove: true });
    say(`${row.name} is removed. Ctrl+Z brings it back.`);
}

// A picker fills the fields of what is chosen.
async function fill(key) {
    await settle();
    const component = state.components.find(({ path }) => path === chosen);
    const code = component?.given.code?.value ?? state.vessel.given.code?.value ?? 'VIII-1';
    const picked = await pickFor(key, {
        code, units: state.units, components: state.components.filter(({ path }) => path !== chosen),
    });
    if (!picked) return;
    queue.add(...Object.entries(picked.fills).map(([name, value]) => ({ path: `${chosen}.${name}`, value })));
    say(picked.words);
    notice('picked', picked.words, []);
    setTimeout(() => clearNotice('picked'), PICKED);
    revealed = key.name;
}

const step = (name) => () => {
    form.take();
    queue.add({ step: name });
};

async function mayLeave() {
    await settle();
    if (!state || state.saved) return true;
    const said = await choose('Not saved', `${state.name ?? 'The new file'} has changes that are not saved. They stay with the server until it ends.`,
        [['save', 'Save', 'main'], ['go', 'Leave it'], [null, 'Cancel']]);
    if (said !== 'save') return said === 'go';
    return save(false);
}

async function openAnother(find) {
    if (!(await mayLeave())) return;
    const next = await find();
    if (next) adopt(next);
}

async function save(asNewName) {
    await settle();
    const next = await saveFile(state, asNewName);
    if (!next) return false;
    const other = next.text !== state.text;
    state = next;
    showHead();
    if (other) queue.add();
    else say(`${state.name} is saved.`);
    return true;
}

// Another document, or the same with another text.
function adopt(next) {
    const same = state?.document === next.document;
    state = next;
    sessionStorage.setItem(OPENED, state.document);
    if (!same) {
        result = null;
        clearNotice('failure');
        clearNotice('disk');
        chosen = state.components[0]?.path ?? 'vessel';
    }
    showAll();
    queue.add();
}

// ---- what went wrong -------------------------------------------------------------------------------------

const inWords = (items) => items.map((item) =>
    `${item.path ?? ''} ${item.typed ?? (item.value !== undefined ? JSON.stringify(item.value) : item.step ?? 'removed')}`.trim()).join('; ');

function failed(error, items) {
    if (error.status === 0 || error.status >= 500) {
        // They wait for the server, until they are sent again or the message is closed.
        unsent.push(...items);
        const words = unsent.length > 0 ? ` Not in the file yet: ${inWords(unsent)}.` : '';
        notice('unsent', `${error.message}${words}`, [['Try again', () => {
            clearNotice('unsent');
            queue.add(...unsent.splice(0));
        }]], () => unsent.splice(0));
        return;
    }
    const words = items.length > 0 ? ` Not in the file: ${inWords(items)}.` : '';
    if (error.status === 401) {
        notice('failure', `This tab no longer belongs to a running server: open the link that it shows again.${words}`, []);
        return;
    }
    const clash = error.body.conflict === 'version';
    notice('failure', `${clash ? 'The file was changed in another tab.' : error.message}${words}`, []);
    if (clash) state = error.body.state;
    showAll();
    if (items.length > 0) queue.add();
}

function notice(name, words, buttons, closed = () => {}) {
    clearNotice(name);
    const box = make('div', { class: `notice ${name}`, role: name === 'picked' ? 'status' : 'alert', 'data-notice': name }, make('span', {}, words),
        ...buttons.map(([label, action]) => make('button', { type: 'button', onclick: action }, label)),
        make('button', { type: 'button', class: 'quiet', 'aria-label': 'Close this message', onclick: () => {
            clearNotice(name);
            closed();
        } }, '×'));
    byId('notices').append(box);
}

function clearNotice(name) {
    byId('notices').querySelector(`[data-notice="${name}"]`)?.remove();
}

function say(words) {
    setText(byId('said'), words);
}

// ---- what is shown ---------------------------------------------------------------------------------------

function showAll(sequence) {
    showHead();
    showTree();
    showForm();
    if (result) {
        const focused = document.activeElement?.closest?.('.field')?.dataset.key;
        announce(panel.show(result, { state, vocabulary, chosen, sequence, focused }));
        if (stale) panel.wait(true, false);
    }
    reveal();
}

function showHead() {
    setText(byId('file-name-shown'), state.name ?? 'New file');
    document.title = `${state.saved ? '' : '* '}${state.name ?? 'New file'} – tarvane`;
    byId('saved').hidden = state.saved && state.name !== null;
    setText(byId('saved'), 'not saved');
    byId('undo').disabled = !state.undo;
    byId('redo').disabled = !state.redo;
    for (const id of ['save', 'save-as', 'changes', 'download']) byId(id).disabled = false;
    if (state.on_disk === 'changed' || state.on_disk === 'missing') showDisk();
    else clearNotice('disk');
}

function showDisk() {
    if (byId('notices').querySelector('[data-notice="disk"]')?.dataset.version === state.on_disk) return;
    if (state.on_disk === 'missing') {
        notice('disk', `${state.name} is no longer on disk. Saving writes it again.`, []);
    } else {
        notice('disk', `${state.name} was changed on disk by another program.`, [
            ['Take the file on disk', () => attempt(async () => adopt(await post('/api/reload', { document: state.document })))],
            ['Show what differs', () => attempt(() => showChanges(state))],
            ['Save over it', () => attempt(async () => {
                await settle();
                state = await post('/api/save', { document: state.document, force: true });
                showHead();
            })],
        ]);
    }
    byId('notices').querySelector('[data-notice="disk"]').dataset.version = state.on_disk;
}

function showTree() {
    tree.show(treeRows(state, result), chosen, stale);
}

function showForm() {
    const view = state.syntax ? null : formView(state, result, vocabulary, chosen);
    byId('adding').hidden = state.syntax !== null;
    if (view) {
        setText(byId('form-title'), view.title);
        form.show(view);
        return;
    }
    const implied = result?.components.find(({ path }) => path === chosen);
    if (!implied && !state.syntax && chosen !== 'vessel') {
        chosen = 'vessel';
        showForm();
        return;
    }
    setText(byId('form-title'), implied?.description ?? 'File');
    form.clear(state.syntax ? `Line ${state.syntax.line} of the file can’t be read: ${state.syntax.message}`
        : 'MDMT of the vessel asks for this check. It has no fields of its own: see the component of this name.');
}

// One sentence for those who listen, when the verdict settles.
let announced = '', announcing = 0;
function announce(words) {
    if (words === announced) return;
    announced = words;
    clearTimeout(announcing);
    announcing = setTimeout(() => say(words), 700);
}

function showTab(name) {
    document.body.dataset.tab = name;
    for (const button of byId('tabs').children) {
        if (button.dataset.tab === name) button.setAttribute('aria-current', 'true');
        else button.removeAttribute('aria-current');
    }
}

// ---- the start -------------------------------------------------------------------------------------------

function listen() {
    const on = (id, action) => byId(id).addEventListener('click', () => attempt(action));
    on('new', () => openAnother(() => newFile(vocabulary.templates)));
    on('open', () => openAnother(openFile));
    on('save', () => save(false));
    on('save-as', () => save(true));
    on('undo', step('undo'));
    on('redo', step('redo'));
    on('changes', async () => {
        await settle();
        await showChanges(state);
    });
    on('download', async () => {
        await settle();
        await downloadAs(state);
    });
    byId('tabs').addEventListener('click', ({ target }) => target.dataset.tab && showTab(target.dataset.tab));
    document.addEventListener('keydown', shortcut);
    addEventListener('beforeunload', (event) => {
        if (state && !state.saved && state.undo) event.preventDefault();
    });
    setInterval(look, LOOK);
    addEventListener('focus', look);
}

function shortcut(event) {
    if (!event.ctrlKey && !event.metaKey) return;
    if (!state || document.querySelector('dialog')) return;
    const name = event.key.toLowerCase();
    const typing = document.activeElement?.classList.contains('draft');
    const actions = { s: () => save(false), z: event.shiftKey ? step('redo') : step('undo'), y: step('redo') };
    // The browser takes back what is being typed; the file's own steps come after that.
    if (!actions[name] || (typing && name !== 's')) return;
    event.preventDefault();
    attempt(actions[name]);
}

// Whether another program or another tab changed the file.
async function look() {
    if (!state || queue.open || document.hidden) return;
    const { document: looked, version } = state;
    try {
        const now = await get(`/api/state?document=${encodeURIComponent(looked)}`);
        if (queue.open || state.document !== looked || state.version !== version) return;
        clearNotice('silence');
        if (now.version !== version) adopt(now);
        else {
            state = now;
            showHead();
        }
    } catch (error) {
        if (unsent.length === 0) notice('silence', error.message, []);
    }
}

async function start() {
    showTab('form');
    const handed = await enter();
    vocabulary = new Vocabulary(await get('/api/fields'));
    tree.offer(vocabulary.componentKinds);
    listen();
    for (const id of ['save', 'save-as', 'changes', 'download', 'undo', 'redo']) byId(id).disabled = true;
    const last = handed ?? sessionStorage.getItem(OPENED);
    const found = last ? await get(`/api/state?document=${encodeURIComponent(last)}`).catch(() => null) : null;
    if (found) adopt(found);
    else welcome();
}

function welcome() {
    panel.welcome();
    form.clear('No file is open.');
}

start().catch((error) => {
    const words = error.status === 401 || error.status === 403
        ? 'This page belongs to no running server any more: open the link that tarvane serve shows again.' : error.message;
    notice('failure', words, []);
    console.error(error);
});

// Dialogs: each is made when it is asked for, and goes when it is closed.

import { make } from './dom.js';

// Answers with what `close` is given, or null.
export function ask(title, build) {
    return new Promise((answered) => {
        const dialog = make('dialog', { 'aria-labelledby': 'dialog-title' });
        let answer = null;
        const close = (value = null) => {
            answer = value;
            dialog.close();
        };
        dialog.append(
            make('div', { class: 'dialog-head' }, make('h2', { id: 'dialog-title' }, title),
                make('button', { type: 'button', class: 'quiet', 'aria-label': 'Close', onclick: () => close() }, '×')),
            ...build(close));
        dialog.addEventListener('close', () => {
            dialog.remove();
            answered(answer);
        });
        document.body.append(dialog);
        dialog.showModal();
    });
}

// A choice of buttons: [[value, words, "main"?], ...].
export function choose(title, words, buttons) {
    return ask(title, (close) => [make('p', {}, words), buttonRow(buttons.map(([value, label, main]) =>
        make('button', { type: 'button', class: main ?? '', onclick: () => close(value) }, label)))]);
}

export const buttonRow = (buttons) => make('div', { class: 'buttons' }, ...buttons);

// A list to choose from, by words typed above it. `find(words)` -> {rows: [{title, detail, from, mark, value}], more}.
export function pick(title, hint, find) {
    return ask(title, (close) => {
        const entry = make('input', { type: 'search', autocomplete: 'off', 'aria-label': hint, placeholder: hint, autofocus: true });
        const list = make('ul', { class: 'choices' });
        const said = make('p', { class: 'remark', role: 'status' });
        let newest = 0, timer = 0;
        const refresh = async () => {
            const number = ++newest;
            try {
                const { rows, more } = await find(entry.value);
                if (number !== newest) return;
                list.replaceChildren(...rows.map((row) => make('li', {}, choiceButton(row, close))));
                said.textContent = rows.length === 0 ? 'Nothing of that name.' : more > 0 ? `${more} more: type more of the name.` : '';
            } catch (error) {
                said.textContent = error.message;
            }
        };
        entry.addEventListener('input', () => {
            clearTimeout(timer);
            timer = setTimeout(refresh, 120);
        });
        entry.addEventListener('keydown', (event) => {
            if (event.key !== 'Enter') return;
            event.preventDefault();
            list.querySelector('button')?.focus();
        });
        const move = (event) => {
            const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
            if (!step) return;
            event.preventDefault();
            const all = [entry, ...list.querySelectorAll('button')];
            all[all.indexOf(document.activeElement) + step]?.focus();
        };
        entry.addEventListener('keydown', move);
        list.addEventListener('keydown', move);
        refresh();
        return [entry, said, list];
    });
}

function choiceButton(row, close) {
    return make('button', { type: 'button', onclick: () => close(row) },
        make('span', { class: 'choice-title' }, row.title),
        row.mark ? make('span', { class: 'tag approximate' }, row.mark) : null,
        make('span', { class: 'choice-detail' }, row.detail ?? ''),
        row.from ? make('span', { class: 'choice-from' }, row.from) : null);
}

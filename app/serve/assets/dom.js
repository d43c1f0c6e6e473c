// Elements in one call. Texts go in as texts, never as markup.

export function make(tag, attributes = {}, ...children) {
    const element = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes)) {
        if (value === undefined || value === null || value === false) continue;
        if (name.startsWith('on')) element.addEventListener(name.slice(2), value);
        else element.setAttribute(name, value === true ? '' : value);
    }
    element.append(...children.filter((child) => child !== null && child !== undefined));
    return element;
}

export const byId = (id) => document.getElementById(id);

// Sets a text only where it differs: what is read aloud or selected is left alone.
export function setText(element, text) {
    if (element.textContent !== text) element.textContent = text;
}

export const states = {
    pass: { mark: '✓', word: 'pass' },
    fail: { mark: '✗', word: 'fail' },
    'not made': { mark: '?', word: 'not made' },
    waived: { mark: '~', word: 'waived' },
    'not asked': { mark: '·', word: 'not asked' },
    faulty: { mark: '!', word: 'input faults' },
    unknown: { mark: '·', word: 'no result' },
};

// The mark of a verdict or of a check, with its word for those who don't see it.
export function markOf(state, withWord = false) {
    const { mark, word } = states[state] ?? states.unknown;
    const element = make('span', { class: `mark ${state.replace(' ', '-')}` },
        make('span', { 'aria-hidden': 'true' }, mark));
    element.append(make('span', { class: withWord ? 'word' : 'unseen' }, ` ${word}`));
    return element;
}

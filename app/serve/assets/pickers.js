// Catalogues of the data files, and the components of the vessel: a choice fills the fields, and says from where.

import { get } from './api.js';
import { pick } from './dialogs.js';

const HINTS = {
    materials: 'Name or kind: 516, plate',
    flanges: 'Class and size: 300 6, PN16 100',
    gaskets: 'Kind: spiral, elastomer',
    bolts: 'Series and size: TEMA 0.75',
};

// {fills: {key: value}, words}, or null.
export async function pickFor(key, { code, units, components }) {
    const chosen = key.link ? await pickComponent(key, components) : await pickRow(key, code, units);
    if (!chosen) return null;
    return { fills: chosen.value, words: `${chosen.title}: from ${chosen.from}` };
}

function pickRow(key, code, units) {
    return pick(key.label, HINTS[key.picker] ?? 'Name', async (words) => {
        const query = new URLSearchParams({ q: words, units, code, key: key.name });
        const { rows, more } = await get(`/api/catalogue/${key.picker}?${query}`);
        return {
            more,
            rows: wholeWordsFirst(rows, words).map((row) => ({
                title: row.name, detail: row.detail, from: row.from, value: row.fills, mark: row.approximate ? 'approximate' : '',
            })),
        };
    });
}

function pickComponent(key, components) {
    return pick(key.label, 'Description', async (words) => {
        const wanted = words.trim().toLowerCase();
        const rows = components.filter(({ description }) => description && description.toLowerCase().includes(wanted))
            .map(({ description, path }) => ({
                title: description, detail: path, from: 'this file', value: { [key.name]: description },
            }));
        return { rows, more: 0 };
    });
}

// "300 6" means NPS 6 before NPS 0.625.
function wholeWordsFirst(rows, words) {
    const wanted = words.toLowerCase().split(/\s+/).filter(Boolean);
    const whole = ({ name }) => {
        const parts = name.toLowerCase().split(/[\s,]+/);
        return wanted.filter((word) => parts.includes(word)).length;
    };
    return rows.map((row) => [whole(row), row]).sort(([a], [b]) => b - a).map(([, row]) => row);
}

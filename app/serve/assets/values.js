// What a typed text says.

const NUMBER = /^[-+]?(\d+\.\d+|\d+|\.\d+)([eE][-+]?\d+)?$/;
const BEGUN = /^([-+]?\d*\.?|[-+]?(\d+\.?\d*|\.\d+)[eE][-+]?)$/; // "3.", "-", "2e"
const WORDS = new Set(['text', 'choice', 'flag', 'designation', 'list of checks']);

export const isNumeric = (key) => !WORDS.has(key.quantity);
export const isNumber = (text) => NUMBER.test(text) && Number.isFinite(Number(text));

// state: "empty" (the key goes), "value", "begun" (a number that is not finished), "wrong"; the last two with a reason.
// What is `plain` may be taken after a pause; the rest waits for Enter or for the field to be left.
export function readTyped(key, typed, commaIsPoint = false) {
    const text = typed.trim();
    if (text === '') return { state: 'empty', plain: false };
    if (!isNumeric(key)) return { state: 'value', plain: false };
    const pointed = commaIsPoint ? text.replace(',', '.') : text;
    if (isNumber(pointed)) return { state: 'value', plain: true };
    if (NUMBER.test(pointed)) return { state: 'wrong', reason: `${text} is too large.` };
    if (BEGUN.test(pointed)) return { state: 'begun', reason: `“${text}” is not a whole number or decimal yet.` };
    if (/^[-+]?[\d.]*,\d/.test(pointed)) {
        return {
            state: 'wrong',
            reason: `A comma is no decimal sign here: write ${text.replace(',', '.')}` +
                `${/,\d{3}(\D|$)/.test(text) ? `, or ${text.replaceAll(',', '')} if it separates thousands` : ''}.`,
        };
    }
    return { state: 'value', plain: false };
}

// "in." and "in", "lbm/in³" and "lb/in3" are one unit.
const plain = (unit) => unit.replaceAll('²', '2').replaceAll('³', '3').replace(/[.°]/g, '').replace('lbm', 'lb').replace(/lbs$/, 'lb');
export const sameUnit = (a, b) => plain(a) === plain(b);

// "250 mm" as number and unit, where the unit is one of those offered.
export function splitUnit(value, units) {
    if (typeof value !== 'string') return null;
    const [, number, unit] = /^\s*(\S+)\s+(.*\S)\s*$/.exec(value) ?? [];
    const offered = number && isNumber(number) ? units.find((one) => sameUnit(one, unit)) : undefined;
    return offered ? { number, unit: offered } : null;
}

// A value of the file in a field: a number as it is written there.
export function fieldText({ value, written }) {
    if (typeof value === 'number') return written;
    if (typeof value === 'boolean') return value ? 'yes' : 'no';
    return Array.isArray(value) ? value.join(', ') : String(value ?? '');
}

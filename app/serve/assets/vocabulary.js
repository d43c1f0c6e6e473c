// The keys, results and checks that the library knows, and what its conditions say of a component.

// What [vessel] is asked for first; any key of a component may be there.
const VESSEL = [
    ['Vessel', ['description', 'code', 'edition', 'waive']],
    ['Design conditions', ['P', 'P_external', 'T', 'MDMT', 'ci', 'E']],
    ['Materials', ['material', 'bolt_material']],
];

export class Vocabulary {
    #kinds;
    #all;

    constructor(fields) {
        this.#all = fields;
        this.#kinds = new Map(fields.kinds.map((kind) => [kind.name, indexed(kind)]));
        this.#kinds.set('head', indexed({ name: 'head', keys: sectioned('File', fields.head.keys) }));
    }

    get templates() {
        return this.#all.new;
    }
    get componentKinds() {
        return this.#all.kinds;
    }
    kind(name) {
        return this.#kinds.get(name);
    }

    // [vessel] with these keys given: those of `VESSEL`, and whatever else the file has there.
    vesselKind(given) {
        const keys = [], names = new Set();
        const add = (name, section) => {
            const key = this.#anyKey(name);
            if (!key || names.has(name)) return;
            names.add(name);
            keys.push({ ...key, section, read: undefined, required: undefined, default: undefined });
        };
        for (const [section, members] of VESSEL) members.forEach((name) => add(name, section));
        const own = this.#all.vessel.keys.filter(({ name }) => !names.has(name));
        own.forEach(({ name }) => names.add(name));
        keys.push(...own.map((key) => ({ ...key, section: 'Liquid', required: undefined })));
        for (const name of Object.keys(given)) add(name, 'For every component');
        return indexed({ name: 'vessel', keys });
    }

    // [document] with its revisions, and room for one more.
    documentKind(given) {
        const places = Object.keys(given).map((name) => Number(/^revisions\[(\d+)\]/.exec(name)?.[1] ?? -1));
        const number = Math.max(-1, ...places) + 1;
        const revisions = Array.from({ length: number + 1 }, (_, i) => this.#all.document.revision_keys.map((key) => ({
            ...key, name: `revisions[${i}].${key.name}`, section: i < number ? `Revision ${i + 1}` : 'One more revision',
        })));
        return indexed({ name: 'document', keys: [...sectioned('Document', this.#all.document.keys), ...revisions.flat()] });
    }

    #anyKey(name) {
        // In the words of a shell, which has no part in the name.
        const kinds = [...this.#all.kinds].sort((a, b) => (b.name === 'shell') - (a.name === 'shell'));
        for (const kind of kinds) {
            const key = kind.keys.find((one) => one.name === name);
            if (key) return name === 'description' ? { ...key, meaning: 'name of the vessel, in its summary' } : key;
        }
        return undefined;
    }
}

const sectioned = (section, keys) => keys.map((key) => ({ ...key, section: key.section || section }));
const indexed = (kind) => ({ ...kind, byName: new Map(kind.keys.map((key) => [key.name, key])) });

// The field of a name that a file may use: "gasket.m" for m, a second name.
export function fieldName(kind, name) {
    const last = name.slice(name.lastIndexOf('.') + 1);
    const names = [name, last].flatMap((one) => [one, kind?.second_names?.find((other) => other.name === one)?.key]);
    return names.find((one) => kind?.byName.has(one)) ?? name;
}

// Choices by the first name of each number.
export function choicesOf(key) {
    const seen = new Set();
    return (key.choices ?? []).filter(({ number }) => !seen.has(number) && seen.add(number));
}

const choiceOf = (key, value) =>
    (key.choices ?? []).find(({ name, number }) => name === value || number === value || String(number) === value);

// The first name of what a choice has in the file, which may be another name or a number.
export function choiceName(key, value) {
    const choice = choiceOf(key, value);
    return choice && choicesOf(key).find(({ number }) => number === choice.number).name;
}

// The number by which conditions go.
export function numberOf(key, value) {
    if (value === true || value === 'yes' || value === 'true') return 1;
    if (value === false || value === 'no' || value === 'false') return 0;
    return key.choices ? choiceOf(key, value)?.number : Number(value);
}

// A condition of the tables. A rule is known to the library alone: undefined.
export function holds(condition, number, given) {
    if (!condition) return true;
    for (const term of condition.all ?? []) {
        if (term.among ? !term.among.includes(number(term.key)) : given(term.key) !== term.given) return false;
    }
    return condition.rule ? undefined : true;
}

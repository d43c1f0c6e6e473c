// What is shown of a state and a result of the server, without the page.

import { sameUnit } from './values.js';
import { fieldName } from './vocabulary.js';

const HEAD_TITLE = 'Settings of the file';

// Rows of the tree: what the file has, then the metal temperatures that [vessel] asks for.
export function treeRows(state, result) {
    const judged = new Map((result?.components ?? []).map((one) => [one.path, one]));
    const faults = result?.faults ?? [];
    const wrong = (path) => faults.some((fault) => fault.path === path || fault.path.startsWith(`${path}.`));
    const row = (path, kind, name, more = {}) => ({
        path, kind, name, verdict: wrong(path) ? 'faulty' : judged.get(path)?.verdict, ratio: judged.get(path)?.ratio, ...more,
    });
    return [
        row('vessel', 'whole', 'Vessel: what holds for all', { verdict: wrong('vessel') ? 'faulty' : undefined }),
        row('document', 'whole', 'Texts of the document'),
        row('head', 'whole', HEAD_TITLE),
        ...state.components.map((one) => row(one.path, one.kind, one.description || one.path, { removable: true })),
        ...(result?.components ?? []).filter(({ implied }) => implied)
            .map((one) => row(one.path, one.kind, one.description || one.path, { implied: true })),
    ];
}

// What the form needs of what is chosen; null where the file has no fields for it.
export function formView(state, result, vocabulary, chosen) {
    const view = viewOf(state, result, vocabulary, chosen);
    return view && { ...view, faults: faultsOf(result, chosen, view.kind) };
}

function viewOf(state, result, vocabulary, chosen) {
    const common = {
        shared: () => undefined, inputs: null, units: (key) => unitsOf(key, state.units),
        commaIsPoint: state.head.given.decimal_comma?.value === true,
    };
    if (chosen === 'head' || chosen === 'document') {
        const title = chosen === 'head' ? HEAD_TITLE : 'Texts of the document';
        const given = chosen === 'head' ? state.head.given : state.about.given;
        const kind = chosen === 'head' ? vocabulary.kind('head') : vocabulary.documentKind(given);
        return { ...common, id: `${state.document}/${chosen}/${kind.keys.length}`, path: chosen === 'head' ? '' : 'document.', title, kind, given };
    }
    if (chosen === 'vessel') {
        const kind = vocabulary.vesselKind(state.vessel.given);
        const id = `${state.document}/vessel/${state.units}/${kind.keys.map(({ name }) => name)}`;
        return { ...common, id, path: 'vessel.', title: 'Vessel: what holds for all components', kind, given: state.vessel.given };
    }
    const component = state.components.find(({ path }) => path === chosen);
    if (!component) return null;
    const calculated = result?.component?.path === chosen ? result.component : null;
    return {
        ...common, id: `${state.document}/${chosen}/${component.kind}/${state.units}`, path: `${chosen}.`,
        title: component.description || chosen, kind: vocabulary.kind(component.kind), given: component.given,
        inputs: calculated?.inputs ?? null, shared: (name) => sharedOf(state, name),
    };
}

function sharedOf(state, name) {
    if (name === 'description' || name === 'waive') return undefined;
    const places = [[state.vessel.given[name], 'from the vessel'], [state.head.given[name], 'from the head of the file']];
    const found = places.find(([given]) => given);
    if (!found) return undefined;
    const [{ value, written }, from] = found;
    return { value, text: typeof value === 'string' ? value : written, from };
}

function unitsOf(key, system) {
    const own = key.units?.[system];
    return own ? [own, ...(key.value_units ?? []).filter((unit) => !sameUnit(unit, own))] : [];
}

function faultsOf(result, chosen, kind) {
    const byKey = new Map();
    for (const fault of result?.faults ?? []) {
        const inside = chosen === 'head' ? !fault.path.includes('.') : fault.path.startsWith(`${chosen}.`);
        if (!inside || !fault.key) continue;
        const name = fieldName(kind, fault.key);
        byKey.set(name, [...(byKey.get(name) ?? []), fault.reason]);
    }
    return byKey;
}

// Where a fault leads: what is to be chosen, and its field.
export function placeOf(fault, vocabulary) {
    const [, component, kind] = /^(([a-z]+)\[\d+\])/.exec(fault.path) ?? [];
    if (component) return { chosen: component, key: fieldName(vocabulary.kind(kind), fault.key) };
    const head = fault.path.split('.')[0];
    return { chosen: head === 'vessel' || head === 'document' ? head : 'head', key: fault.key };
}

// What the server writes as markup has words of a file in it. Only known elements and attributes are copied into the
// page.

const SVG = 'http://www.w3.org/2000/svg', HTML = 'http://www.w3.org/1999/xhtml';

const list = (words) => words.split(' ');
const SHAPE = list('fill stroke stroke-width stroke-dasharray stroke-linecap stroke-linejoin transform font-family ' +
    'font-size font-weight text-anchor opacity data-field');
const DRAWN = new Map(Object.entries({
    svg: 'viewBox role aria-label width height', g: '', path: 'd', line: 'x1 y1 x2 y2', polyline: 'points',
    polygon: 'points', rect: 'x y width height rx', circle: 'cx cy r', ellipse: 'cx cy rx ry',
    text: 'x y textLength lengthAdjust', tspan: 'x y dx dy',
}).map(([name, attributes]) => [name, new Set([...list(attributes), ...SHAPE])]));
const WRITTEN = new Set(list('section h2 h3 h4 p pre span div b strong i em sub sup table caption thead tbody tr th td ' +
    'ul ol li br'));
const OF_WRITTEN = new Set(list('class role scope colspan'));

// Colours, numbers, names: nothing that refers to something else.
const PLAIN = /^[^()]*$|^(rotate|translate|scale|matrix)\([-\d., e]+\)$/;
const WORDS = new Set(['aria-label', 'data-field', 'font-family']);

function copy(node, namespace, attributesOf) {
    const allowed = node.namespaceURI === namespace ? attributesOf(node.localName) : undefined;
    if (!allowed) return null;
    const made = document.createElementNS(namespace, node.localName);
    for (const { name, value } of node.attributes) {
        if (allowed.has(name) && (WORDS.has(name) || PLAIN.test(value))) made.setAttribute(name, value);
    }
    for (const child of node.childNodes) {
        if (child.nodeType === Node.TEXT_NODE) made.append(child.nodeValue);
        const inner = child.nodeType === Node.ELEMENT_NODE ? copy(child, namespace, attributesOf) : null;
        if (inner) made.append(inner);
    }
    return made;
}

// A drawing, or null. Its size on paper is a style, which the content security policy would complain about.
export function copiedDrawing(text) {
    const bare = text.replace(/^(\s*(?:<\?xml[^>]*\?>\s*)?<svg(?:\s+[\w:-]+="[^"]*")*?)\s+style="[^"]*"/, '$1');
    const root = new DOMParser().parseFromString(bare, 'image/svg+xml').documentElement;
    return root.localName === 'svg' ? copy(root, SVG, (name) => DRAWN.get(name)) : null;
}

// Elements of a text in HTML.
export function copiedText(text) {
    const { body } = new DOMParser().parseFromString(text, 'text/html');
    const made = document.createDocumentFragment();
    for (const child of body.children) {
        const inner = copy(child, HTML, (name) => (WRITTEN.has(name) ? OF_WRITTEN : undefined));
        if (inner) made.append(inner);
    }
    return made;
}

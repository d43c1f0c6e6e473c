"""Scripts that tests run in the page."""

# From Enter in a field until the new result is painted, in the page itself; and the part of it that the server takes.
TIMES = """
const done = arguments[arguments.length - 1];
const field = document.getElementById('field-t'), results = document.getElementById('results'), times = [];
const pause = (ms) => new Promise((go) => setTimeout(go, ms));
// A task that a frame has queued runs when the frame is painted.
const painted = () => new Promise((go) => requestAnimationFrame(() => setTimeout(go)));
const changed = () => new Promise((go) => {
    const observer = new MutationObserver(() => {
        observer.disconnect();
        go();
    });
    observer.observe(results, { attributeFilter: ['data-sequence'] });
});
(async () => {
    field.focus();
    for (let i = 0; i < 15; ++i) {
        await pause(150);
        const before = performance.getEntriesByType('resource').length;
        field.value = (1.4 + i / 100).toFixed(2);
        field.dispatchEvent(new Event('input', { bubbles: true }));
        const from = performance.now(), next = changed();
        field.dispatchEvent(new KeyboardEvent('keydown', { key: 'Enter', bubbles: true, cancelable: true }));
        await next;
        await painted();
        const whole = performance.now() - from;
        const request = performance.getEntriesByType('resource').slice(before).find(({ name }) => name.endsWith('/api/edit'));
        times.push([whole, request.responseEnd - request.startTime]);
    }
    done(times);
})();
"""

# Six entries faster than the server answers.
NEWEST = """
const done = arguments[0], field = document.getElementById('field-P'), results = document.getElementById('results');
const own = window.fetch, stale = [], shown = [];
let requests = 0, under = 0, most = 0;
window.fetch = async (path, ...rest) => {
    if (!path.endsWith('/api/edit')) return own(path, ...rest);
    ++requests;
    most = Math.max(most, ++under);
    const response = await own(path, ...rest);
    await new Promise((go) => setTimeout(go, 40));
    --under;
    return response;
};
const last = () => field.value === '1500';
new MutationObserver(() => shown.push(last())).observe(results, { attributeFilter: ['data-sequence'] });
(async () => {
    field.focus();
    for (const text of ['200', '300', '400', '500', '600', '1500']) {
        field.value = text;
        field.dispatchEvent(new Event('input', { bubbles: true }));
        field.dispatchEvent(new KeyboardEvent('keydown', { key: 'Enter', bubbles: true, cancelable: true }));
        stale.push(results.classList.contains('stale') && document.getElementById('verdict').classList.contains('stale'));
        await new Promise((go) => setTimeout(go, 10));
    }
    while (results.getAttribute('aria-busy') === 'true') {
        stale.push(results.classList.contains('stale'));
        await new Promise((go) => setTimeout(go, 5));
    }
    window.fetch = own;
    done({ requests, most, stale, shown });
})();
"""

# Texts of less contrast than 4.5 to 1 against what is under them; what is stale or can't be used is let off.
CONTRAST = """
const canvas = document.createElement('canvas').getContext('2d', { willReadFrequently: true });
const rgba = (colour) => {
    canvas.clearRect(0, 0, 1, 1);
    canvas.fillStyle = colour;
    canvas.fillRect(0, 0, 1, 1);
    return [...canvas.getImageData(0, 0, 1, 1).data];
};
const light = ([r, g, b]) => [r, g, b].map((c) => c / 255).map((c) => (c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4))
    .reduce((sum, c, i) => sum + c * [0.2126, 0.7152, 0.0722][i], 0);
const ground = (e) => {
    for (; e; e = e.parentElement) {
        const colour = rgba(getComputedStyle(e).backgroundColor);
        if (colour[3] === 255) return colour;
    }
    return [255, 255, 255];
};
const found = new Set();
for (const e of document.querySelectorAll('body *')) {
    const own = [...e.childNodes].some((n) => n.nodeType === 3 && n.nodeValue.trim() !== '');
    if (!own || e.closest('svg, :disabled, .stale, option') || !e.checkVisibility()) continue;
    const [a, b] = [light(rgba(getComputedStyle(e).color)), light(ground(e))].sort((x, y) => y - x);
    if ((a + 0.05) / (b + 0.05) < 4.5) found.add(`${e.localName}.${e.className} ${((a + 0.05) / (b + 0.05)).toFixed(2)} ${e.textContent.slice(0, 30)}`);
}
return [...found];
"""

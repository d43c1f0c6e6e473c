// Requests to the server, and the key that it hands out for the token in the address.

const KEY = 'tarvane-key';

export class ApiError extends Error {
    constructor(message, status, body) {
        super(message);
        this.status = status; // 0: no answer
        this.body = body;
    }
}

async function answer(path, options) {
    let response;
    try {
        response = await fetch(path, { cache: 'no-store', credentials: 'same-origin', ...options });
    } catch {
        throw new ApiError('The server does not answer. Is tarvane serve still running?', 0, {});
    }
    if (response.ok) return response;
    const text = await response.text();
    let body = {};
    try {
        body = JSON.parse(text);
    } catch {
        body.error = text;
    }
    throw new ApiError(body.error || `The server refused it: ${response.status}.`, response.status, body);
}

const key = () => localStorage.getItem(KEY) ?? '';

export async function get(path) {
    return (await answer(path, { headers: { 'X-Tarvane': key() } })).json();
}

export async function post(path, body) {
    const headers = { 'X-Tarvane': path === '/enter' ? '1' : key(), 'Content-Type': 'application/json' };
    return (await answer(path, { method: 'POST', headers, body: JSON.stringify(body) })).json();
}

// The token of the address becomes a key, and leaves the address. The handle of the document that is open, if any.
export async function enter() {
    const token = location.hash.slice(1);
    if (token === '') return null;
    history.replaceState(null, '', location.pathname);
    const entered = await post('/enter', { token });
    localStorage.setItem(KEY, entered.key);
    return entered.document;
}

// Saves what the server makes, under the name that it gives.
export async function download(format, documentHandle) {
    const path = `/api/download/${format}?document=${encodeURIComponent(documentHandle)}`;
    const response = await answer(path, { headers: { 'X-Tarvane': key() } });
    const [, name] = /filename="([^"]+)"/.exec(response.headers.get('Content-Disposition') ?? '') ?? [];
    const address = URL.createObjectURL(await response.blob());
    const link = document.createElement('a');
    link.href = address;
    link.download = name ?? `tarvane.${format}`;
    link.click();
    setTimeout(() => URL.revokeObjectURL(address), 60000);
}

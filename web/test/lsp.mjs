// The language server of the module over standard input and output, for tests that speak to any server: node lsp.mjs
import { load } from "../dist/index.js";

const library = await load();
const server = library.server();
let rest = Buffer.alloc(0);
let wasShutDown = false;

function send(messages) {
    for (const message of messages) {
        const bytes = Buffer.from(message);
        process.stdout.write(`Content-Length: ${bytes.length}\r\n\r\n`);
        process.stdout.write(bytes);
    }
}

/** Ends when all is written. */
function end(code) {
    process.stdout.write("", () => process.exit(code));
}

/** How the client ends a server is told by its messages: the module itself has nothing to end. */
function take(message) {
    send(server.take(message));
    let method;
    try {
        method = JSON.parse(message.toString()).method;
    } catch {
        return; // answered by the server
    }
    wasShutDown ||= method === "shutdown";
    if (method === "exit") end(wasShutDown ? 0 : 1);
}

function takeAll() {
    for (;;) {
        const head = rest.indexOf("\r\n\r\n");
        const length = head < 0 ? NaN : Number(/content-length: *(\d+)/i.exec(rest.subarray(0, head).toString())?.[1]);
        if (!(rest.length >= head + 4 + length)) return;
        const message = rest.subarray(head + 4, head + 4 + length);
        rest = rest.subarray(head + 4 + length);
        take(message);
    }
}

function work() {
    if (server.hasWork()) {
        send(server.work());
        setImmediate(work);
    }
}

process.stdin.on("data", (data) => {
    rest = Buffer.concat([rest, data]);
    takeAll();
    setImmediate(work);
});
process.stdin.on("end", () => end(1));

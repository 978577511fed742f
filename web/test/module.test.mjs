// The module and its worker: what they answer, what they take, and what becomes of a text that takes too long.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { test } from "node:test";
import { Worker } from "node:worker_threads";
import { gzipSync } from "node:zlib";
import { GjfWorker, load } from "../dist/index.js";

const bytes = readFileSync(new URL("../dist/quor_gjf.wasm", import.meta.url));
const job = (route, rows = "He 0.0 0.0 0.0") => `${route}\n\nt\n\n0 1\n${rows}\n\n`;
const grid = (atoms) => Array.from({ length: atoms }, (_, i) => `C ${(i % 27) * 1.5} ${(Math.floor(i / 27) % 27) * 1.5} ${Math.floor(i / 729) * 1.5}`).join("\n");
const codes = (answer) => answer.findings.map((each) => each.code);
const library = await load();

test("finds what is wrong, with its place and a fix", () => {
    const [finding] = library.request("check", job("# hf/sto-3g opt=clacfc")).findings;
    assert.equal(finding.code, "GJF-R001");
    assert.deepEqual([finding.begin, finding.end, finding.fixes[0].edits], [16, 22, [{ begin: 16, end: 22, text: "calcfc" }]]);
});

test("knows elements, basis sets and descriptions, which are carried inside", () => {
    assert.deepEqual(codes(library.request("check", job("# hf/6-31g(d)"))), []);
    assert.equal(library.request("report", job("# hf/6-31g(d)")).jobs[0].functions, 2);
    assert.deepEqual(library.request("complete", "# b3l").completions, [{ text: "b3lyp", roles: ["method"] }]);
});

test("never takes an atom beyond 32 bits for another", () => {
    const two = "H 0.0 0.0 0.0\nH 0.0 0.0 0.7";
    for (const section of ["B 2 4294967297 F", "B 4294967298 1 F", "D 1 2 1 18446744073709551617 F"]) {
        const found = library.request("check", `${job("# hf/sto-3g opt=modredundant", two)}${section}\n\n`);
        assert.ok(codes(found).includes("GJF-S015"), section);
    }
});

test("answers what it cannot do by an error", () => {
    for (const [command, text, options] of [["paint", "", {}], ["check", "", { nonsense: 1 }], ["edit", job("# hf"), { charge: "much" }]]) {
        assert.ok("error" in library.request(command, text, options), command);
    }
});

test("takes bytes as they are", () => {
    assert.deepEqual(codes(library.request("check", job("# hf/sto-3g").replace("\nt\n", "\nt\0\n"))), ["GJF-T002"]);
    const latin1 = (text) => Uint8Array.from(text, (character) => character.charCodeAt(0));
    const [finding] = library.request("check", latin1(`${job("# hf/sto-3g opt=\xe5")}`)).findings;
    assert.deepEqual([finding.begin, finding.end], [16, 17]); // one byte, of no UTF-8
    assert.deepEqual(codes(library.request("check", `\ufeff${job("# hf/sto-3g")}`)), ["GJF-T008"]);
});

function worker(patience) {
    const ended = [];
    const create = () => {
        const thread = new Worker(new URL("./thread.mjs", import.meta.url));
        const like = { onmessage: null, onerror: null, postMessage: (message) => thread.postMessage(message), terminate: () => void thread.terminate() };
        thread.on("message", (data) => like.onmessage?.({ data }));
        thread.on("error", (error) => like.onerror?.(error));
        return like;
    };
    const client = new GjfWorker(create, bytes, patience);
    client.onend = (reason) => ended.push(reason);
    return { client, ended };
}

test("a worker answers requests and messages", async () => {
    const { client } = worker(60_000);
    const [one, two] = await Promise.all([client.request("check", job("# hf/sto-3g opt=clacfc")), client.request("check", job("# hf/sto-3g"))]);
    assert.deepEqual([codes(one), codes(two)], [["GJF-R001"], []]);
    const told = new Promise((resolve) => {
        client.onmessage = (message) => message.includes("publishDiagnostics") && resolve(JSON.parse(message));
    });
    const send = (method, params, id) => client.send(JSON.stringify({ jsonrpc: "2.0", id, method, params }));
    send("initialize", { capabilities: {} }, 1);
    send("initialized", {});
    send("textDocument/didOpen", { textDocument: { uri: "file:///a.gjf", languageId: "gaussian", version: 1, text: job("# hf/sto-3g opt=clacfc") } });
    assert.deepEqual((await told).params.diagnostics.map((each) => each.code), ["GJF-R001"]);
    client.end();
});

test("a text that takes too long ends the worker, and the next has another", async () => {
    const { client, ended } = worker(60_000);
    await assert.rejects(client.request("check", job("# hf/sto-3g", grid(100_000)), {}, 1), /took longer than 1 ms/);
    assert.deepEqual(codes(await client.request("check", job("# hf/sto-3g"))), []);
    assert.equal(ended.length, 1);
    client.end();
});

test("a worker that cannot begin says so", async () => {
    const { client } = worker(60_000);
    client.module = new Uint8Array([1, 2, 3]);
    await assert.rejects(client.request("check", ""), /CompileError/);
});

test("imports no more than a few functions of a system", () => {
    const names = WebAssembly.Module.imports(new WebAssembly.Module(bytes)).map((each) => each.name);
    assert.ok(names.length <= 16 && names.every((name) => /^(fd_|environ_|proc_exit|__syscall_|emscripten_notify_memory_growth)/.test(name)), names.join(" "));
});

test("is of a bounded size, and takes a bounded memory", async () => {
    const size = (name) => gzipSync(readFileSync(new URL(`../dist/${name}`, import.meta.url)), { level: 9 }).length;
    const glue = ["index.js", "module.js", "worker.js", "client.js"].reduce((sum, name) => sum + size(name), 0);
    console.log(`quor_gjf.wasm: ${size("quor_gjf.wasm")} bytes with gzip -9 (wanted: 500000), its glue: ${glue} (wanted: 10000)`);
    assert.ok(size("quor_gjf.wasm") < 950_000 && glue < 10_000);
    const fresh = await load();
    const text = job("# hf/3-21g", grid(20_000));
    fresh.request("check", text);
    const begin = performance.now();
    fresh.request("check", text);
    console.log(`20000 atoms: ${(performance.now() - begin).toFixed(0)} ms warm, ${fresh.memorySize / 2 ** 20} MiB`);
    assert.ok(fresh.memorySize <= 32 * 2 ** 20);
});

test("does what its README says, under the version of the library", async () => {
    const read = (name) => readFileSync(new URL(name, import.meta.url), "utf8");
    const [, example] = /```js\n(.*?)```/s.exec(read("../README.md"));
    globalThis.told = [];
    const code = example.replace('"quor-gjf"', JSON.stringify(new URL("../dist/index.js", import.meta.url).href)).replace("console.log(", "told.push(");
    await import(`data:text/javascript,${encodeURIComponent(code)}`);
    assert.deepEqual(globalThis.told, [/console\.log.*; \/\/ (.*)/.exec(example)[1]]);
    assert.equal(JSON.parse(read("../package.json")).version, /VERSION ([\d.]+) LANGUAGES/.exec(read("../../CMakeLists.txt"))[1]);
    assert.ok(!read("../package-lock.json").includes('"resolved"'));
});

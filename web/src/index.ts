// The library for Gaussian job files as WebAssembly, for Node.js and browsers.
import { Gjf } from "./module.js";

export { Gjf, GjfFailure, type Command, type GjfServer, type Text } from "./module.js";
export { GjfWorker, type WorkerLike } from "./client.js";
export { answerOn, type FromWorker, type Port, type ToWorker } from "./worker.js";

/** Loads the library from quor_gjf.wasm, which lies beside this file unless an address says otherwise. */
export async function load(address: URL | string = new URL("./quor_gjf.wasm", import.meta.url)): Promise<Gjf> {
    const url = new URL(address, import.meta.url);
    if (url.protocol === "file:" && typeof process !== "undefined") {
        const { readFile } = await import("node:fs/promises");
        return Gjf.instantiate(await readFile(url));
    }
    const response = await fetch(url);
    if (!response.ok) throw new Error(`${url.href}: ${response.status}`);
    return Gjf.instantiate(await response.arrayBuffer());
}

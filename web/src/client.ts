// The page's side of a worker: asks it, waits no longer than is wanted, and begins another where one has ended.
import type { Command, Text } from "./module.js";
import type { FromWorker, ToWorker } from "./worker.js";

/** What of a worker is used: Worker has it. */
export interface WorkerLike {
    onmessage: ((event: { data: FromWorker }) => void) | null;
    onerror: ((event: unknown) => void) | null;
    postMessage(message: ToWorker): void;
    terminate(): void;
}

interface Waiting {
    resolve(answer: Record<string, unknown>): void;
    reject(error: Error): void;
    timer: ReturnType<typeof setTimeout>;
}

/** The library in a worker. */
export class GjfWorker {
    /** Called with each message of the language server, and with the reason when the worker had to be ended. */
    onmessage: (message: string) => void = () => undefined;
    onend: (reason: string) => void = () => undefined;
    private worker: WorkerLike | undefined;
    private readonly waiting = new Map<number, Waiting>();
    private number = 0;

    /** `create` makes a worker of quor-gjf/worker; `module` is quor_gjf.wasm, compiled or as bytes. */
    constructor(
        private readonly create: () => WorkerLike,
        private readonly module: BufferSource | WebAssembly.Module,
        private readonly patience = 10_000,
    ) {}

    /** Runs a command on a text; rejects when the library fails or takes longer than so many milliseconds, which ends the worker. */
    request(command: Command, text: Text, options: Record<string, unknown> = {}, patience = this.patience): Promise<Record<string, unknown>> {
        const number = ++this.number;
        return new Promise((resolve, reject) => {
            const timer = setTimeout(() => this.end(`${command} took longer than ${patience} ms`), patience);
            this.waiting.set(number, { resolve, reject, timer });
            this.running().postMessage({ kind: "request", number, command, text, options });
        });
    }

    /** Sends a message to the language server, which begins with its first. */
    send(message: string): void {
        this.running().postMessage({ kind: "message", message });
    }

    /** Ends the worker; the next request or message begins another, with a language server that knows no text. */
    end(reason = "ended"): void {
        this.worker?.terminate();
        this.worker = undefined;
        for (const { reject, timer } of this.waiting.values()) {
            clearTimeout(timer);
            reject(new Error(reason));
        }
        this.waiting.clear();
        this.onend(reason);
    }

    private running(): WorkerLike {
        if (this.worker === undefined) {
            this.worker = this.create();
            this.worker.onmessage = ({ data }) => this.take(data);
            this.worker.onerror = (event) => this.end(`the worker failed: ${(event as { message?: string })?.message ?? "unknown"}`);
            this.worker.postMessage({ kind: "begin", module: this.module });
        }
        return this.worker;
    }

    private take(data: FromWorker): void {
        if (data.kind === "message") {
            this.onmessage(data.message);
        } else if (data.kind === "failure") {
            this.end(data.reason); // what failed is of no further use
        } else if (data.kind === "answer") {
            const waiting = this.waiting.get(data.number);
            this.waiting.delete(data.number);
            clearTimeout(waiting?.timer);
            waiting?.resolve(data.answer);
        }
    }
}

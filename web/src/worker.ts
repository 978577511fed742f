// The library in a worker, where it may take its time: requests are answered by number, messages of the language server go to and fro.
//
// The first message brings the module. A page ends the worker when a text takes too long, and begins another.
import { Gjf, type Command, type GjfServer, type Text } from "./module.js";

/** What a worker is told. */
export type ToWorker =
    | { kind: "begin"; module: BufferSource | WebAssembly.Module }
    | { kind: "request"; number: number; command: Command; text: Text; options?: Record<string, unknown> }
    | { kind: "message"; message: string };

/** What a worker tells. */
export type FromWorker =
    | { kind: "ready" }
    | { kind: "answer"; number: number; answer: Record<string, unknown> }
    | { kind: "message"; message: string }
    | { kind: "failure"; reason: string; number?: number };

/** What of a worker's surroundings is used. */
export interface Port {
    onmessage: ((event: { data: ToWorker }) => void) | null;
    postMessage(message: FromWorker): void;
}

/** Lets the library answer on a port. */
export function answerOn(port: Port): void {
    let library: Promise<Gjf> | undefined;
    let server: GjfServer | undefined;
    let isScheduled = false;
    const tell = (messages: string[]) => messages.forEach((message) => port.postMessage({ kind: "message", message }));
    // Behind the messages that wait already, so that of many states the last is checked alone.
    const schedule = () => {
        if (!isScheduled && server?.hasWork()) {
            isScheduled = true;
            setTimeout(() => {
                isScheduled = false;
                guarded(() => tell(server!.work()));
                schedule();
            });
        }
    };
    const guarded = (action: () => void, number?: number) => {
        try {
            action();
        } catch (error) {
            port.postMessage({ kind: "failure", reason: String(error), number });
        }
    };
    port.onmessage = async ({ data }) => {
        if (data.kind === "begin") {
            library = Gjf.instantiate(data.module);
            library.then(
                () => port.postMessage({ kind: "ready" }),
                (error: unknown) => port.postMessage({ kind: "failure", reason: String(error) }),
            );
            return;
        }
        const gjf = await library?.catch(() => undefined);
        if (gjf === undefined) return; // told already
        if (data.kind === "request") {
            guarded(
                () => port.postMessage({ kind: "answer", number: data.number, answer: gjf.request(data.command, data.text, data.options) }),
                data.number,
            );
            return;
        }
        guarded(() => {
            server ??= gjf.server();
            tell(server.take(data.message));
        });
        schedule();
    };
}

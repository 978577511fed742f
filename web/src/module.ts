// The library in WebAssembly: gives it what it imports of a system, of which there is none here, and carries texts in and out.

/** What the module exports; addresses are numbers. */
interface Exports {
    readonly memory: WebAssembly.Memory;
    _initialize(): void;
    malloc(size: number): number;
    free(address: number): void;
    gjf_request(command: number, text: number, size: number, options: number): number;
    gjf_result_text(result: number): number;
    gjf_result_size(result: number): number;
    gjf_result_destroy(result: number): void;
    gjf_server_create(): number;
    gjf_server_message(server: number, message: number, size: number): number;
    gjf_server_has_work(server: number): number;
    gjf_server_work(server: number): number;
    gjf_server_destroy(server: number): void;
}

export type Command = "check" | "fix" | "report" | "route" | "complete" | "outline" | "select" | "edit" | "diff" | "find";

/** A text, or its bytes, which need not be UTF-8. */
export type Text = string | Uint8Array;

/** Tells that the library can go on no further, as without memory. What was loaded is of no use then: load it again. */
export class GjfFailure extends Error {}

// As the C library here counts errors.
const noFile = 44;
const noDescriptor = 8;

/** Answers each import: there are no files, no environment, and nobody to write to. */
function systemFor(module: WebAssembly.Module, memory: () => WebAssembly.Memory): WebAssembly.Imports {
    const answers: Record<string, (...numbers: number[]) => number> = {
        environ_sizes_get: (count, size) => {
            const view = new DataView(memory().buffer);
            view.setUint32(count, 0, true);
            view.setUint32(size, 0, true);
            return 0;
        },
        environ_get: () => 0,
        emscripten_notify_memory_growth: () => 0,
        proc_exit: (code) => {
            throw new GjfFailure(`the library ended with ${code}`);
        },
    };
    const imports: Record<string, Record<string, WebAssembly.ImportValue>> = {};
    for (const { module: space, name } of WebAssembly.Module.imports(module)) {
        imports[space] ??= {};
        imports[space][name] = answers[name] ?? (name.startsWith("__syscall") ? () => -noFile : () => noDescriptor);
    }
    return imports;
}

const encoder = new TextEncoder();
const decoder = new TextDecoder();

/** The library. Its calls answer at once and take as long as they take: in a page they belong into a worker. */
export class Gjf {
    private constructor(private readonly exports: Exports) {}

    /** Makes the library ready from the bytes of quor_gjf.wasm, or from the module that they were compiled to. */
    static async instantiate(source: BufferSource | WebAssembly.Module): Promise<Gjf> {
        const module = source instanceof WebAssembly.Module ? source : await WebAssembly.compile(source);
        let exports: Exports | undefined;
        const instance = await WebAssembly.instantiate(
            module,
            systemFor(module, () => exports!.memory),
        );
        exports = instance.exports as unknown as Exports;
        exports._initialize();
        return new Gjf(exports);
    }

    /**
     * Runs a command of the tool on a text and returns the line that the tool prints with --json. Options are named as the tool's long ones.
     * A command that fails is answered by an object with `error`.
     */
    request(command: Command, text: Text, options: Record<string, unknown> = {}): Record<string, unknown> {
        return JSON.parse(decoder.decode(this.requestBytes(command, text, options))) as Record<string, unknown>;
    }

    /** The same with the answer's bytes as they are: they are UTF-8 with a line feed at the end. */
    requestBytes(command: string, text: Text, options: Record<string, unknown> = {}): Uint8Array {
        return this.withBytes(command, (name) =>
            this.withBytes(text, (data, size) =>
                this.withBytes(JSON.stringify(options), (wanted) => this.take(this.exports.gjf_request(name, data, size, wanted))),
            ),
        );
    }

    /** Makes a language server: an object that takes a message and gives messages. */
    server(): GjfServer {
        const server = this.checked(this.exports.gjf_server_create());
        const lines = (result: number) => decoder.decode(this.take(result)).split("\n").slice(0, -1);
        return {
            take: (message) => this.withBytes(message, (data, size) => lines(this.exports.gjf_server_message(server, data, size))),
            hasWork: () => this.exports.gjf_server_has_work(server) > 0,
            work: () => lines(this.exports.gjf_server_work(server)),
            end: () => this.exports.gjf_server_destroy(server),
        };
    }

    /** Bytes of memory that are in use; they become no fewer. */
    get memorySize(): number {
        return this.exports.memory.buffer.byteLength;
    }

    private checked(address: number): number {
        if (address === 0) throw new GjfFailure("no memory is left");
        return address;
    }

    /** Puts bytes into memory, with a zero behind, for as long as `use` takes. */
    private withBytes<Result>(text: Text, use: (address: number, size: number) => Result): Result {
        const bytes = typeof text === "string" ? encoder.encode(text) : text;
        const address = this.checked(this.exports.malloc(bytes.length + 1));
        try {
            const memory = new Uint8Array(this.exports.memory.buffer, address, bytes.length + 1);
            memory.set(bytes);
            memory[bytes.length] = 0;
            return use(address, bytes.length);
        } finally {
            this.exports.free(address);
        }
    }

    /** Takes the bytes of a result and frees it. */
    private take(result: number): Uint8Array {
        this.checked(result);
        const address = this.exports.gjf_result_text(result);
        const bytes = new Uint8Array(this.exports.memory.buffer, address, this.exports.gjf_result_size(result)).slice();
        this.exports.gjf_result_destroy(result);
        return bytes;
    }
}

/** Speaks the Language Server Protocol 3.17, message by message: JSON texts without header. */
export interface GjfServer {
    /** Takes a message and returns those that answer it. What was changed is left unchecked until `work`. */
    take(message: Text): string[];
    hasWork(): boolean;
    /** Does one piece of what was put off, when no message waits; returns the messages that come of it. */
    work(): string[];
    /** Frees the server. */
    end(): void;
}

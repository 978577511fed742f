// The extension in a browser, where no program can be started: the language server is the library as WebAssembly, which lies in the extension. It
// answers in the worker that extensions run in.
import * as vscode from "vscode";
import { BrowserMessageReader, BrowserMessageWriter, LanguageClient, type MessageTransports } from "vscode-languageclient/browser";
import { answerOn, type Port } from "../../../web/src/worker";
import { clientOptions, serve, tellAbsence } from "./server";

let stop: (() => Promise<void>) | undefined;

/** Begins a server at one end of a channel and gives the other to the client. Messages are objects there, as the client has them. */
async function beginServer(context: vscode.ExtensionContext): Promise<MessageTransports> {
    const { port1: ours, port2: theirs } = new MessageChannel();
    const module = Uint8Array.from(await vscode.workspace.fs.readFile(vscode.Uri.joinPath(context.extensionUri, "dist", "quor_gjf.wasm")));
    await new Promise<void>((resolve, reject) => {
        const port: Port = {
            onmessage: null,
            postMessage(told) {
                if (told.kind === "message") ours.postMessage(JSON.parse(told.message));
                if (told.kind === "ready") resolve();
                if (told.kind === "failure") {
                    reject(new Error(told.reason));
                    ours.close();
                }
            },
        };
        answerOn(port);
        ours.onmessage = ({ data }) => port.onmessage?.({ data: { kind: "message", message: JSON.stringify(data) } });
        port.onmessage?.({ data: { kind: "begin", module } });
    });
    return { reader: new BrowserMessageReader(theirs), writer: new BrowserMessageWriter(theirs) };
}

export async function activate(context: vscode.ExtensionContext): Promise<void> {
    try {
        stop = await serve(context, () => new LanguageClient("quor-gjf", "Gaussian jobs", () => beginServer(context), clientOptions));
    } catch (error) {
        tellAbsence(context, `the language server cannot be started (${String(error)}).`);
    }
}

export async function deactivate(): Promise<void> {
    await stop?.();
}

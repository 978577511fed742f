// The extension where programs can be started: the language server is the program quor-gjf.
import * as vscode from "vscode";
import { LanguageClient } from "vscode-languageclient/node";
import { clientOptions, serve, tellAbsence } from "./server";

let stop: (() => Promise<void>) | undefined;

export async function activate(context: vscode.ExtensionContext): Promise<void> {
    const command = vscode.workspace.getConfiguration("quor-gjf").get("path", "quor-gjf");
    try {
        stop = await serve(
            context,
            () => new LanguageClient("quor-gjf", "Gaussian jobs", { command, args: ["lsp"], options: { detached: false } }, clientOptions),
        );
    } catch (error) {
        tellAbsence(context, `${command} cannot be started (${String(error)}). Install quor-gjf, or name it in the setting quor-gjf.path.`);
    }
}

export async function deactivate(): Promise<void> {
    await stop?.();
}

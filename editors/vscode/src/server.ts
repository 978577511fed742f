// What the extension is wherever it runs: which texts are the server's, and how people are told that there is none.
import * as vscode from "vscode";
import type { BaseLanguageClient, LanguageClientOptions } from "vscode-languageclient";

export const clientOptions: LanguageClientOptions = { documentSelector: [{ language: "gaussian" }] };

/** Stands in the language's status until the extension ends: why nothing is checked here. */
export function tellAbsence(context: vscode.ExtensionContext, reason: string): void {
    const item = vscode.languages.createLanguageStatusItem("quor-gjf.absent", { language: "gaussian" });
    item.name = "Gaussian jobs";
    item.text = "Jobs are not checked";
    item.detail = reason;
    item.severity = vscode.LanguageStatusSeverity.Warning;
    context.subscriptions.push(item);
    void vscode.window.showWarningMessage(`Gaussian jobs are not checked: ${reason}`);
}

/** Starts a client, and again at the command; `create` makes it, over a process or a worker. */
export async function serve(context: vscode.ExtensionContext, create: () => BaseLanguageClient): Promise<() => Promise<void>> {
    let client = create();
    const restart = async () => {
        await client.dispose();
        client = create();
        await client.start();
    };
    context.subscriptions.push(vscode.commands.registerCommand("quor-gjf.restart", restart));
    await client.start();
    return () => client.dispose();
}

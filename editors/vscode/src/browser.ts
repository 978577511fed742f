// The extension in a browser, where no program can be started: colours and snippets, and a word that there is no more.
import type * as vscode from "vscode";
import { tellAbsence } from "./server";

export function activate(context: vscode.ExtensionContext): void {
    tellAbsence(context, "findings, completion and the like need the program quor-gjf, which a browser cannot start.");
}

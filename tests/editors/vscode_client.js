// VS Code's own workbench (code-server in Chromium) at work with the packed extension: vscode_client.js MODULES CODE_SERVER VSIX TOOL WORK
// JOB [PICTURE]. Prints FEATURE: ok, or what was seen instead. Without TOOL ("-") the extension runs in the browser's worker, the server with it.
"use strict";
const fs = require("fs");
const net = require("net");
const path = require("path");
const { execFileSync, spawn } = require("child_process");

const [modules, codeServer, vsix, tool, work, job, picture] = process.argv.slice(2).map((each, i) => (i === 3 || each === undefined ? each : path.resolve(each)));
const { chromium } = require(path.join(modules, "playwright-core"));
const patience = 60000; // milliseconds that one answer may take on a busy machine
const inBrowser = tool === "-";
const folder = path.join(work, "jobs");
const file = path.join(folder, "water.com");
const mended = "#p b3lyp/6-31g(d) opt freq scf=(tight)";
let page;

const sleep = (time) => new Promise((resolve) => setTimeout(resolve, time));

/** Asks until `question` gives something that is true; returns the last answer. */
async function wait(question, time = patience) {
    const end = Date.now() + time;
    for (;;) {
        const answer = await question();
        if (answer || Date.now() > end) return answer;
        await sleep(100);
    }
}

async function tell(feature, question, seen) {
    const is = await wait(question);
    console.log(`${feature}: ${is ? "ok" : JSON.stringify((await seen?.()) ?? "not seen").slice(0, 400)}`);
    if (!is) await page.screenshot({ path: path.join(work, `${feature.replaceAll(" ", "_")}.png`) });
}

const texts = (selector) => page.$$eval(selector, (all) => all.map((each) => each.textContent.replaceAll("\u00a0", " ")));
const holds = (selector, ...words) => async () => {
    const all = (await texts(selector)).join(" ");
    return words.every((word) => all.includes(word));
};

async function press(...keys) {
    for (const key of keys) await page.keyboard.press(key);
}

/** Runs what the palette calls so. */
async function command(name) {
    await press("F1");
    await page.waitForSelector(".quick-input-widget input", { timeout: patience });
    await page.keyboard.type(name);
    await wait(holds(".quick-input-list .monaco-list-row", name.replace(/^>/, "")));
    await press("Enter");
}

/** Puts the cursor at a line and column, both from 1. */
async function at(line, column) {
    await press("Escape", "Escape", "Control+1", "Control+g");
    await page.waitForSelector(".quick-input-widget input", { timeout: patience });
    await page.keyboard.type(`${line}:${column}`);
    await press("Enter");
    await wait(holds(".statusbar-item", `Ln ${line}, Col ${column}`), 5000);
}

async function write(line, text) {
    await at(line, 1);
    await press("End", "Shift+Home", "Delete");
    await page.keyboard.insertText(text);
}

async function saved() {
    await press("Control+s");
    await sleep(200);
    return fs.readFileSync(file, "utf8").split("\n");
}

const findings = () => texts(".markers-panel .monaco-list-row");
const codesAre = (...codes) => async () => {
    const all = await findings();
    const found = all.flatMap((text) => text.match(/GJF-[A-Z]\d+/g) ?? []).sort();
    return JSON.stringify([...new Set(found)]) === JSON.stringify(codes);
};

async function open(browser, port) {
    page = await browser.newPage({ viewport: { width: 1280, height: 800 } });
    await page.goto(`http://127.0.0.1:${port}/?folder=${folder}`, { timeout: patience });
    await page.waitForSelector(".monaco-workbench", { timeout: patience });
    await openFile("water.com");
}

/** Opens a file by the tree: searching by name needs a program that code-server installs by a script of its own. */
async function openFile(name) {
    await page.dblclick(`.explorer-folders-view .monaco-list-row[aria-label*="${name}"]`, { timeout: patience });
    await page.waitForSelector(`.monaco-editor[data-uri$="${name}"] .view-line`, { timeout: patience });
}

/** The class that colours a word of the text, and so its colour. */
const colourOf = (word) =>
    page.$$eval(".view-line span span", (all, wanted) => all.find((each) => each.textContent.trim() === wanted)?.className ?? "", word);

async function tryGrammar() {
    await tell("type of a .com", holds(".statusbar-item", "Gaussian job"), () => texts(".statusbar-item"));
    const words = ["b3lyp", "opt", "tight", "2GB"];
    const differ = async () => {
        const classes = await Promise.all(words.map(colourOf));
        return new Set(classes).size === 4 && !classes.includes("") && !classes.includes("mtk1");
    };
    await tell("colours", differ, async () => Promise.all(words.map(colourOf)));
    await write(15, "");
    await at(15, 1);
    await page.keyboard.type("link1");
    await press("Control+Space");
    await tell("snippets", holds(".suggest-widget .monaco-list-row", "Next job"), () => texts(".suggest-widget .monaco-list-row"));
    await press("Escape", "Control+z", "Control+z", "Control+z");
}

async function tryServer() {
    await command("Problems: Focus on Problems View");
    await tell("findings", codesAre("GJF-M002", "GJF-R021"), findings);
    if (picture) {
        await at(3, 20);
        await press("Control+k", "Control+i");
        await wait(holds(".monaco-hover", "Optimizes"));
        await sleep(500);
        await page.screenshot({ path: picture });
    }
    await write(7, "0 1");
    await tell("findings after an edit", codesAre("GJF-R021"), findings);
    await at(3, 20);
    await press("Control+k", "Control+i");
    await tell("hover", holds(".monaco-hover", "Optimizes"), () => texts(".monaco-hover"));
    await at(9, 5);
    await tell("highlight", async () => (await page.$$(".cdr.wordHighlight, .cdr.wordHighlightText, .cdr.wordHighlightStrong")).length >= 3);
    await press("F12");
    await tell("definition", holds(".statusbar-item", "Ln 12"), () => texts(".statusbar-item"));
    await at(9, 5);
    await press("Shift+F12");
    await tell("references", holds(".reference-zone-widget", "3)"), () => texts(".reference-zone-widget"));
    await at(9, 5);
    await press("F2");
    await page.fill(".rename-box input", "roh", { timeout: patience });
    await page.press(".rename-box input", "Enter");
    await tell("rename", async () => (await saved()).slice(8, 12).join(";") === "H 1 roh;H 1 roh 2 a;;roh 0.96", saved);
    await press("Control+Shift+o");
    await tell("symbols", holds(".quick-input-list .monaco-list-row", "route", "molecule"), () => texts(".quick-input-list .monaco-list-row"));
    await at(3, 40);
    await press("Control+.");
    await tell("mend a finding", holds(".action-widget .monaco-list-row", "leave out tight"), () => texts(".action-widget .monaco-list-row"));
    await press("Escape");
    await command("Fix All");
    await tell("apply all safe fixes", async () => (await saved())[2] === mended, saved);
    await tell("findings after mending", codesAre(), findings);
    await at(3, mended.length + 1);
    await page.keyboard.type(" int=ultraf");
    await press("Control+Space");
    await tell("completion", holds(".suggest-widget .monaco-list-row", "ultrafine"), () => texts(".suggest-widget .monaco-list-row"));
    await press("Enter");
    await tell("completion is written", async () => (await saved())[2] === `${mended} int=ultrafine`, saved);
    await write(3, `${mended} nosym`);
    await tell("tokens", async () => !["", "mtk1"].includes(await colourOf("nosym")), () => colourOf("nosym"));
    await write(8, "    O");
    await press("Shift+Alt+f");
    await tell("align", async () => !(await saved())[7].startsWith("    O"), saved);
    await tell("folding", async () => (await page.$$(".codicon-folding-expanded")).length >= 2);
    await tell("inlay hints", async () => (await texts(".view-line")).some((line) => /2\W*H 1 roh/.test(line)), () => texts(".view-line"));
    await openFile("links.com");
    await tell("links", async () => (await page.$$(".detected-link, .detected-link-active")).length > 0);
}

async function main() {
    fs.mkdirSync(folder, { recursive: true });
    fs.copyFileSync(job, file);
    fs.writeFileSync(path.join(folder, "links.com"), "# hf/sto-3g\n\nA molecule from another file\n\n0 1\n@water.xyz\n\n");
    fs.writeFileSync(path.join(folder, "water.xyz"), "O 0.0 0.0 0.1\nH 0.0 0.7 -0.4\nH 0.0 -0.7 -0.4\n");
    const user = path.join(work, "user");
    fs.mkdirSync(path.join(user, "User"), { recursive: true });
    const settings = {
        "quor-gjf.path": tool,
        "security.workspace.trust.enabled": false,
        "workbench.startupEditor": "none",
        "telemetry.telemetryLevel": "off",
        "editor.inlayHints.enabled": "on",
        "editor.wordBasedSuggestions": "off",
        "editor.showFoldingControls": "always",
        "remote.extensionKind": inBrowser ? { "quor.quor-gjf": ["web"] } : {},
    };
    fs.writeFileSync(path.join(user, "User/settings.json"), JSON.stringify(settings));
    const places = ["--user-data-dir", user, "--extensions-dir", path.join(work, "extensions"), "--config", path.join(work, "config.yaml")];
    fs.writeFileSync(path.join(work, "config.yaml"), "auth: none\ncert: false\n");
    execFileSync(process.execPath, [codeServer, ...places, "--install-extension", vsix], { stdio: "ignore", timeout: 5 * patience });
    const port = await new Promise((resolve) => {
        const server = net.createServer().listen(0, "127.0.0.1", () => {
            const chosen = server.address().port;
            server.close(() => resolve(chosen));
        });
    });
    const flags = ["--bind-addr", `127.0.0.1:${port}`, "--auth", "none", "--disable-telemetry", "--disable-update-check"];
    const served = spawn(process.execPath, [codeServer, ...places, ...flags], { stdio: "ignore", detached: true });
    let browser;
    try {
        await wait(() => fetch(`http://127.0.0.1:${port}/healthz`).then((answer) => answer.ok, () => false));
        browser = await chromium.launch({ executablePath: "/usr/bin/chromium", args: ["--no-sandbox"] });
        await open(browser, port);
        await tryGrammar();
        await tryServer();
    } finally {
        await page?.screenshot({ path: path.join(work, "end.png") }).catch(() => undefined);
        await browser?.close();
        process.kill(-served.pid, "SIGTERM"); // its own group: the editor's processes too
    }
}

main().then(
    () => process.exit(0),
    (error) => {
        console.log(`workbench: ${error}`);
        process.exit(1);
    },
);

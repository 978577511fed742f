// Prints what a TextMate grammar says of each character: textmate.js GRAMMAR MODULES FILE... Of each file one line of JSON: for each
// line the innermost scope of each character.
"use strict";
const fs = require("fs");
const path = require("path");

const [grammarPath, modules, ...files] = process.argv.slice(2);
const { Registry, parseRawGrammar, INITIAL } = require(path.join(modules, "vscode-textmate"));
const oniguruma = require(path.join(modules, "vscode-oniguruma"));

async function main() {
    await oniguruma.loadWASM(fs.readFileSync(path.join(modules, "vscode-oniguruma/release/onig.wasm")).buffer);
    const registry = new Registry({
        onigLib: Promise.resolve({
            createOnigScanner: (patterns) => new oniguruma.OnigScanner(patterns),
            createOnigString: (text) => new oniguruma.OnigString(text),
        }),
        loadGrammar: async () => parseRawGrammar(fs.readFileSync(grammarPath, "utf8"), grammarPath),
    });
    const grammar = await registry.loadGrammar("source.gaussian");
    for (const file of files) {
        let state = INITIAL;
        const scopes = fs.readFileSync(file, "latin1").split("\n").map((line) => {
            const result = grammar.tokenizeLine(line, state);
            state = result.ruleStack;
            return result.tokens.flatMap((token) =>
                Array(Math.min(token.endIndex, line.length) - Math.min(token.startIndex, line.length)).fill(token.scopes.at(-1)));
        });
        process.stdout.write(JSON.stringify(scopes) + "\n");
    }
}

main();

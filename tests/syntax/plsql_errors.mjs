// Parses Oracle scripts and prints the errors found: a JSON array of {file, line, text}.
//
// usage: node plsql_errors.mjs PARSER_FOLDER FILE…     PARSER_FOLDER holds node_modules
import { readFileSync } from 'node:fs';
import { register } from 'node:module';
import { pathToFileURL } from 'node:url';

register('./parser_loader.mjs', import.meta.url);
const [folder, ...files] = process.argv.slice(2);
const { PLSQL } = await import(pathToFileURL(folder + '/node_modules/dt-sql-parser/dist/index.js').href);

const parser = new PLSQL();
const errors = files.flatMap(file => parser.validate(readFileSync(file, 'utf8'))
    .map(error => ({ file, line: error.startLine, text: error.message })));
process.stdout.write(JSON.stringify(errors));

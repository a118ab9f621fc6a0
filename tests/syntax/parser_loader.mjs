// The parser's files are written for a bundler: they import folders and leave out file endings. This finds the
// files that they mean.
import { existsSync, statSync } from 'node:fs';

const belongsToParser = url => url.includes('/node_modules/dt-sql-parser/');

export async function resolve(specifier, context, next) {
    if (specifier.startsWith('.') && belongsToParser(context.parentURL ?? '')) {
        const base = new URL(specifier, context.parentURL).href;
        const file = [base, base + '.js', base + '/index.js']
            .find(name => existsSync(new URL(name)) && statSync(new URL(name)).isFile());
        if (file) {
            return { url: file, format: 'module', shortCircuit: true };
        }
    }
    const found = await next(specifier, context);
    return belongsToParser(found.url) ? { ...found, format: 'module' } : found;
}

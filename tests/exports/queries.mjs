// Runs the SQL blocks of a Markdown file with DuckDB, one behind the other, and prints as JSON what each gives: a list of
// lists of rows. Usage: node queries.mjs MARKDOWN FOLDER, where FOLDER takes the place of DIR in the blocks.
// Ends with 77 where DuckDB is not installed; DUCKDB_NODE_API may name its package's folder.
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';

let duckdb;
try {
    const require = createRequire(import.meta.url);
    duckdb = require(process.env.DUCKDB_NODE_API ?? '@duckdb/node-api');
} catch (error) {
    console.error(String(error.message).split('\n')[0]);
    process.exit(77);
}

const [markdown, folder] = process.argv.slice(2);
const blocks = [...readFileSync(markdown, 'utf8').matchAll(/```sql\n(.*?)```/gs)].map((match) => match[1]);
const instance = await duckdb.DuckDBInstance.create(':memory:');
const connection = await instance.connect();
const results = [];
for (const block of blocks) {
    const reader = await connection.runAndReadAll(block.replaceAll("'DIR/", `'${folder}/`));
    results.push(reader.getRowsJson());
}
console.log(JSON.stringify(results));

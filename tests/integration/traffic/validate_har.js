// Holds an archive, given as a file, against the schemas of the package "har-schema".
//
//     node validate_har.js FILE
//
// Prints what is wrong, one line each, and exits with 1 when anything is.
'use strict'

const fs = require('fs')
const Ajv = require('ajv')
const schemas = require('har-schema')

const ajv = new Ajv({ allErrors: true })
ajv.addMetaSchema(require('ajv/lib/refs/json-schema-draft-06.json'))
ajv.addSchema(Object.values(schemas))
const isArchive = ajv.compile(schemas.har)
if (!isArchive(JSON.parse(fs.readFileSync(process.argv[2], 'utf8')))) {
  for (const error of isArchive.errors) {
    console.log(`${error.dataPath} ${error.message}`)
  }
  process.exitCode = 1
}

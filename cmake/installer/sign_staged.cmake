# Read by CPack before it packs: signs the module's builds with the certificate and key that the environment names.
file(GLOB_RECURSE modules ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*.aex)
foreach(module IN LISTS modules)
  execute_process(COMMAND osslsigncode sign -h sha256 -n nevrel -certs $ENV{NEVREL_CERTIFICATE} -key $ENV{NEVREL_KEY}
                          -in ${module} -out ${module}.signed COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
  file(RENAME ${module}.signed ${module})
endforeach()

# Run over what is to be packed: the same modes and times on every machine, whatever the umask and the hour.
execute_process(COMMAND chmod -R u=rwX,go=rX ${CPACK_TEMPORARY_DIRECTORY} COMMAND_ERROR_IS_FATAL ANY)
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(
        COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec touch --no-dereference --date=@$ENV{SOURCE_DATE_EPOCH} {} +
        COMMAND_ERROR_IS_FATAL ANY)
endif()

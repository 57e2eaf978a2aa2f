# Run as a script by the test package.version: the version of corvane/core/version.h in what names one.
string(REPLACE "." "\\." version "${VERSION}")
set(named
    "CITATION.cff;\nversion: ${version}\n" #
    "CHANGELOG.md;\n## ${version}[,\n]" #
    "packaging/vcpkg/corvane/vcpkg.json;\"version-semver\": \"${version}\"" #
    "dotnet/Corvane/Corvane.csproj;<Version>${version}</Version>" #
    "README.md;\n# corvane ${version}  saturation")
while(named)
  list(POP_FRONT named file pattern)
  file(READ ${SOURCE}/${file} text)
  if(NOT text MATCHES "${pattern}")
    message(SEND_ERROR "${file} does not name version ${VERSION}")
  endif()
endwhile()
